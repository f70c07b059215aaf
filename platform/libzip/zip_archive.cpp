#include "platform/libzip/zip_archive.h"

#include <zip.h>

#include <memory>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

struct Discarder {
    void operator()(zip_t* archive) const { zip_discard(archive); }
    void operator()(zip_source_t* source) const { zip_source_free(source); }
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};
template <typename Handle>
using Held = std::unique_ptr<Handle, Discarder>;

[[noreturn]] void fail() {
    throw RuntimeError(error_number::kBadFormat,
                       std::string("Ce fichier n'est pas une archive zip lisible."_ansi));
}

// Bytes that outlive what is made of them; without any, room that grows.
Held<zip_source_t> sourceOf(std::string_view bytes) {
    zip_error_t error;
    Held<zip_source_t> source(zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error));
    if (!source) fail();
    return source;
}

// Takes the source over.
Held<zip_t> openArchive(Held<zip_source_t> source, int flags) {
    zip_error_t error;
    Held<zip_t> archive(zip_open_from_source(source.get(), flags, &error));
    if (!archive) fail();
    static_cast<void>(source.release());
    return archive;
}

void add(zip_t* archive, const ArchiveFile& file) {
    Held<zip_source_t> content(
        zip_source_buffer(archive, file.content.data(), file.content.size(), 0));
    if (!content ||
        zip_file_add(archive, toUtf8(file.name).c_str(), content.get(), ZIP_FL_ENC_UTF_8) < 0)
        fail();
    static_cast<void>(content.release());
}

std::string contentOf(zip_source_t* source) {
    if (zip_source_open(source) < 0) fail();
    zip_source_seek(source, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(zip_source_tell(source)), '\0');
    zip_source_seek(source, 0, SEEK_SET);
    const zip_int64_t read = zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    if (read != static_cast<zip_int64_t>(bytes.size())) fail();
    return bytes;
}

// The size that an archive states is not believed.
std::string read(zip_t* archive, zip_uint64_t index, std::uint64_t mostBytes) {
    const Held<zip_file_t> file(zip_fopen_index(archive, index, 0));
    if (!file) fail();
    std::string content;
    std::string piece(65'536, '\0');
    for (;;) {
        const zip_int64_t size = zip_fread(file.get(), piece.data(), piece.size());
        if (size < 0) fail();
        if (size == 0) return content;
        content.append(piece, 0, static_cast<std::size_t>(size));
        if (content.size() > mostBytes)
            throw RuntimeError(error_number::kBadFormat,
                               std::string("L'archive contient trop de données."_ansi));
    }
}

}  // namespace

std::string ZipArchive::pack(const std::vector<ArchiveFile>& files) {
    Held<zip_source_t> source = sourceOf({});
    // One for the archive, which it lets go of when it is closed, and one to read from.
    zip_source_keep(source.get());
    const Held<zip_source_t> kept(source.get());
    Held<zip_t> archive = openArchive(std::move(source), ZIP_TRUNCATE);
    for (const ArchiveFile& file : files) add(archive.get(), file);
    if (zip_close(archive.get()) < 0) fail();
    static_cast<void>(archive.release());
    return contentOf(kept.get());
}

std::vector<ArchiveFile> ZipArchive::unpack(std::string_view bytes, std::uint64_t mostBytes) {
    const Held<zip_t> archive = openArchive(sourceOf(bytes), ZIP_RDONLY | ZIP_CHECKCONS);
    std::vector<ArchiveFile> files;
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t index = 0; index < count; ++index) {
        const auto entry = static_cast<zip_uint64_t>(index);
        const char* const name = zip_get_name(archive.get(), entry, ZIP_FL_ENC_GUESS);
        if (name == nullptr) fail();
        ArchiveFile file{fromUtf8(name), {}};
        if (file.name.ends_with('/')) continue;
        file.content = read(archive.get(), entry, mostBytes);
        mostBytes -= file.content.size();
        files.push_back(std::move(file));
    }
    return files;
}

}  // namespace kalvo
