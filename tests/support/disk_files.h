// The system's own files, on a disk that can be full.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "tests/support/system_bindings.h"
#include "text/runtime_error.h"

namespace kalvo::testing {

class DiskFiles : public SystemFiles {
public:
    bool diskFull = false;
    bool unreadable = false;  // line by line, from the second on
    // A file that is really another one, which the test may write.
    std::pair<std::string, std::string> moved;

    std::unique_ptr<TextStream> create(std::string_view path) override {
        return orFull(SystemFiles::create(path == moved.first ? moved.second : path));
    }
    std::unique_ptr<TextStream> createNew(std::string_view path) override {
        return orFull(SystemFiles::createNew(path));
    }
    std::unique_ptr<TextStream> append(std::string_view path) override {
        return orFull(SystemFiles::append(path));
    }

    void readLines(std::string_view path,
                   const std::function<void(std::string_view)>& visit) override {
        SystemFiles::readLines(path, [&](std::string_view line) {
            visit(line);
            if (unreadable) throw RuntimeError(error_number::kDeviceIo, "Erreur de lecture");
        });
    }

private:
    struct FullStream : TextStream {
        void write(std::string_view) override {
            throw RuntimeError(error_number::kDiskFull, "Disque plein");
        }
        void close() override {}
    };

    [[nodiscard]] std::unique_ptr<TextStream> orFull(std::unique_ptr<TextStream> stream) const {
        return diskFull ? std::make_unique<FullStream>() : std::move(stream);
    }
};

}  // namespace kalvo::testing
