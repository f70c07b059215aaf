#include "transfer/kermit/kermit_file_sink.h"

#include "text/resume_next.h"

namespace kalvo {

void KermitFileSink::begin(const std::string& name) {
    path_ = place_(name);
    stream_ = files_.create(part());
}

void KermitFileSink::end(bool whole) {
    if (!whole) return discard();
    stream_->close();
    files_.rename(part(), path_);
    stream_.reset();
}

void KermitFileSink::discard() {
    if (stream_ == nullptr) return;
    stream_.reset();
    // If it stays, the next file of this name replaces it.
    resumeNext([this] { files_.remove(part()); });
}

}  // namespace kalvo
