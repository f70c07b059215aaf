// Files and folders in memory; "/" separates, "\" too.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/file_system.h"
#include "text/runtime_error.h"

namespace kalvo::testing {

// Paths are the same whichever of the two separates their folders.
struct PathLess {
    bool operator()(const std::string& a, const std::string& b) const {
        const auto slash = [](char c) { return c == '\\' ? '/' : c; };
        return std::lexicographical_compare(
            a.begin(), a.end(), b.begin(), b.end(),
            [slash](char x, char y) { return slash(x) < slash(y); });
    }
};

class FakeFileSystem : public FileSystem {
public:
    std::map<std::string, std::string, PathLess> files;
    std::set<std::string, PathLess> folders;
    // What was done, in order: "mkdir /a", "create f", "append f", "remove f".
    std::vector<std::string> log;
    bool diskFull = false;
    bool listingFails = false;

    bool fileExists(std::string_view path) override { return files.contains(normal(path)); }
    bool folderExists(std::string_view path) override {
        return folders.contains(withoutEnd(normal(path)));
    }
    void createFolder(std::string_view path) override {
        log.push_back("mkdir " + normal(path));
        folders.insert(withoutEnd(normal(path)));
    }
    std::unique_ptr<TextStream> create(std::string_view path) override {
        log.push_back("create " + normal(path));
        if (path.empty()) throw RuntimeError(error_number::kPathAccess, "");
        return std::make_unique<Stream>(*this, files[normal(path)] = "", normal(path));
    }
    std::unique_ptr<TextStream> createNew(std::string_view path) override { return create(path); }
    std::unique_ptr<TextStream> append(std::string_view path) override {
        log.push_back("append " + normal(path));
        return std::make_unique<Stream>(*this, "", normal(path));
    }
    std::string read(std::string_view path) override {
        const auto found = files.find(normal(path));
        if (found == files.end()) throw RuntimeError(error_number::kFileNotFound, "");
        return found->second;
    }
    std::unique_ptr<ByteSource> open(std::string_view path) override {
        return std::make_unique<Source>(read(path));
    }
    void readLines(std::string_view path,
                   const std::function<void(std::string_view)>& visit) override {
        const std::string text = read(path);
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = std::min(text.find('\n', start), text.size());
            std::size_t length = end - start;
            if (length > 0 && end < text.size() && text[end - 1] == '\r') --length;
            visit(std::string_view(text).substr(start, length));
            start = end + 1;
        }
    }
    std::uint64_t size(std::string_view path) override { return read(path).size(); }
    std::int64_t ageInSeconds(std::string_view) override { return 0; }
    std::vector<std::string> list(std::string_view folder) override {
        if (listingFails) throw RuntimeError(error_number::kPathNotFound, "");
        std::vector<std::string> names;
        const std::string prefix = withoutEnd(normal(folder)) + "/";
        for (const auto& [path, content] : files)
            if (normal(path).starts_with(prefix)) names.push_back(path.substr(prefix.size()));
        return names;
    }
    void remove(std::string_view path) override {
        log.push_back("remove " + normal(path));
        files.erase(normal(path));
    }
    std::string shownPath(std::string_view path) const override { return std::string(path); }
    void replace(std::string_view path, std::string_view content) override {
        log.push_back("replace " + normal(path));
        if (diskFull) throw RuntimeError(error_number::kDiskFull, "");
        files[normal(path)] = content;
    }
    void rename(std::string_view from, std::string_view to) override {
        log.push_back("rename " + normal(from) + " " + normal(to));
        files[normal(to)] = read(from);
        files.erase(normal(from));
    }

private:
    class Stream : public TextStream {
    public:
        Stream(FakeFileSystem& owner, std::string_view, std::string path)
            : owner_(owner), path_(std::move(path)) {}
        void write(std::string_view bytes) override {
            if (owner_.diskFull) throw RuntimeError(error_number::kDiskFull, "Disque plein");
            owner_.files[path_].append(bytes);
        }
        void close() override {}

    private:
        FakeFileSystem& owner_;
        std::string path_;
    };

    class Source : public ByteSource {
    public:
        explicit Source(std::string content) : content_(std::move(content)) {}
        std::size_t read(std::span<char> buffer) override {
            const std::size_t count = content_.copy(buffer.data(), buffer.size(), at_);
            at_ += count;
            return count;
        }

    private:
        std::string content_;
        std::size_t at_ = 0;
    };

    static std::string normal(std::string_view path) {
        std::string text(path);
        std::replace(text.begin(), text.end(), '\\', '/');
        return text;
    }
    static std::string withoutEnd(std::string path) {
        if (path.ends_with('/')) path.pop_back();
        return path;
    }
};

}  // namespace kalvo::testing
