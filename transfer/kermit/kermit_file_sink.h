// Files that a Kermit peer sends, each beside its target until it is whole.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/file_system.h"
#include "transfer/kermit/kermit_receiver.h"

namespace kalvo {

class KermitFileSink : public KermitSink {
public:
    // `place` gives the path of a file that the peer calls by a name; a RuntimeError
    // refuses it. A file is written as "PATH.part" and takes its name at its end.
    KermitFileSink(FileSystem& files, std::function<std::string(const std::string& name)> place)
        : files_(files), place_(std::move(place)) {}
    KermitFileSink(const KermitFileSink&) = delete;
    KermitFileSink& operator=(const KermitFileSink&) = delete;
    // What is not whole goes away.
    ~KermitFileSink() override { discard(); }

    void begin(const std::string& name) override;
    void write(std::string_view bytes) override { stream_->write(bytes); }
    void end(bool whole) override;

private:
    [[nodiscard]] std::string part() const { return path_ + ".part"; }
    void discard();

    FileSystem& files_;
    std::function<std::string(const std::string& name)> place_;
    std::string path_;
    std::unique_ptr<TextStream> stream_;
};

}  // namespace kalvo
