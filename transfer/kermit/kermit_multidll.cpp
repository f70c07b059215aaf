#include "transfer/kermit/kermit_multidll.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "text/ansi_text.h"
#include "text/runtime_error.h"
#include "transfer/kermit/kermit_file_sink.h"
#include "transfer/kermit/kermit_receiver.h"

namespace kalvo {

namespace {

constexpr std::int32_t kVersion = 100;
constexpr std::size_t kMostListing = 65536;
// A command fits into a short packet: nothing longer is agreed on before it.
constexpr std::size_t kLongestName = 64;
constexpr std::string_view kParityLetters = "NOE";

// A file's entry in the listings servers make has its name last (Unix) or first beside
// a size (others); a sentence that says the file is missing has neither.
bool lists(std::string_view line, std::string_view name) {
    std::string_view first;
    std::string_view last;
    bool sized = false;
    while (!line.empty()) {
        const std::size_t size = std::min(line.find_first_of(" \t\r"), line.size());
        const std::string_view word = line.substr(0, size);
        line.remove_prefix(std::min(size + 1, line.size()));
        if (word.empty()) continue;
        if (first.empty()) first = word;
        sized = sized || word.find_first_not_of("0123456789.,") == std::string_view::npos;
        last = word.substr(word.find_last_of("/\\:") + 1);
    }
    return equalIgnoringCase(last, name) || (sized && equalIgnoringCase(first, name));
}

bool listingHas(std::string_view text, std::string_view name) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (lists(text.substr(0, end), name)) return true;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
}

// Keeps the beginning of a text: one entry of a listing is what was asked for.
class TextSink : public KermitSink {
public:
    void begin(const std::string& /*name*/) override {}
    void write(std::string_view bytes) override {
        if (text_.size() < kMostListing) text_ += bytes;
    }
    void end(bool /*whole*/) override {}

    [[nodiscard]] const std::string& text() const { return text_; }

private:
    std::string text_;
};

void report(const KermitProgress& progress, std::int32_t& bytes, std::int32_t& packets) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
    bytes = static_cast<std::int32_t>(std::min(progress.bytes, kMost));
    packets = progress.packets;
}

}  // namespace

// One file of the peer's, whatever the peer calls it, on its way to one of ours.
struct KermitMultidll::Upload {
    Upload(KermitLink& link, FileSystem& files, const std::string& path)
        : sink(files,
               [path, first = true](const std::string& /*name*/) mutable {
                   if (!std::exchange(first, false))
                       throw RuntimeError(error_number::kFileExists, path);
                   return path;
               }),
          receiver(link, sink) {}

    KermitFileSink sink;
    KermitReceiver receiver;
};

KermitMultidll::KermitMultidll(TransferLine& line, FileSystem& files,
                               std::function<bool()> breakRequested)
    : line_(line), files_(files), link_(line, std::move(breakRequested)) {}

KermitMultidll::~KermitMultidll() = default;

TransferCode KermitMultidll::HM_OpenCommPort(std::int32_t port, std::int32_t speed,
                                             std::int32_t dataBits, std::int32_t parity,
                                             std::int32_t stopBits) {
    if (parity < 0 || parity >= static_cast<int>(kParityLetters.size()) || speed <= 0)
        return TransferCode::kIllegalCommand;
    finish(TransferCode::kUserBreak);
    pace_ = std::max(speed / 10, 1);
    sevenBits_ = dataBits < 8;
    link_.setPace(pace_);
    try {
        line_.open(port, std::to_string(speed) + "," +
                             kParityLetters[static_cast<std::size_t>(parity)] + "," +
                             std::to_string(dataBits) + "," + std::to_string(stopBits));
    } catch (const RuntimeError& error) {
        return error.number() == error_number::kPortSettings ? TransferCode::kIllegalCommand
                                                             : TransferCode::kUnsuccessfulOrMore;
    }
    return TransferCode::kSuccess;
}

TransferCode KermitMultidll::HM_CloseCommPort(std::int32_t /*port*/) {
    if (upload_ || download_) link_.abandon("Port closed");
    finish(TransferCode::kUserBreak);
    line_.close();
    return TransferCode::kSuccess;
}

TransferCode KermitMultidll::checkCall(std::string_view remoteName) const {
    if (!line_.isOpen()) return TransferCode::kIllegalCommand;
    const bool single = !remoteName.empty() && remoteName.size() <= kLongestName &&
                        remoteName.find_first_of("*?") == std::string_view::npos;
    return single ? TransferCode::kSuccess : TransferCode::kIllegalFileName;
}

KermitParameters KermitMultidll::ownParameters() const {
    KermitParameters parameters = fullParameters(pace_);
    parameters.timeOut = patience_.timeOut / 1000;
    parameters.eighthBit = sevenBits_ ? '&' : 'Y';
    return parameters;
}

TransferCode KermitMultidll::hello() {
    finish(TransferCode::kUserBreak);
    if (!line_.isOpen()) return TransferCode::kIllegalCommand;
    link_.setPatience(patience_);
    return link_.greet({'I', 0, encodeParameters(ownParameters())});
}

TransferCode KermitMultidll::HM_power_saving_off(std::int32_t /*port*/, char /*terminal*/) {
    return hello();
}

TransferCode KermitMultidll::HM_power_saving_on(std::int32_t /*port*/, char /*terminal*/) {
    return hello();
}

TransferCode KermitMultidll::HM_file_exist(std::int32_t /*port*/, char /*terminal*/,
                                           std::string_view remoteName) {
    if (const auto refusal = checkCall(remoteName); refusal != TransferCode::kSuccess)
        return refusal;
    std::string text;
    TransferCode code = hello();
    if (code == TransferCode::kSuccess) {
        const std::string question = std::string("D") +
                                     toChar(static_cast<int>(remoteName.size())) +
                                     std::string(remoteName);
        KermitPacket answer;
        code = link_.request({'G', 0, encodeWhole(question, {})}, "SY", answer);
        if (code == TransferCode::kSuccess && answer.type == 'Y') text = answer.data;
        if (code == TransferCode::kSuccess && answer.type == 'S') code = readListing(answer, text);
        if (code == TransferCode::kUserBreak && link_.peerBrokeOff())
            return TransferCode::kFileNotThere;
    }
    if (code != TransferCode::kSuccess) return code;
    return listingHas(text, remoteName) ? TransferCode::kSuccess : TransferCode::kFileNotThere;
}

// The text of a long answer.
TransferCode KermitMultidll::readListing(const KermitPacket& initiation, std::string& text) {
    TextSink sink;
    KermitReceiver receiver(link_, sink);
    TransferCode code = receiver.accept(initiation, ownParameters());
    if (code != TransferCode::kSuccess) return code;
    do code = receiver.step();
    while (code == TransferCode::kUnsuccessfulOrMore);
    text = sink.text();
    return code;
}

TransferCode KermitMultidll::HM_upload1(std::int32_t /*port*/, char /*terminal*/,
                                        std::string_view remoteName, std::string_view localName) {
    finish(TransferCode::kUserBreak);
    localName_ = localName;
    if (const auto refusal = checkCall(remoteName); refusal != TransferCode::kSuccess)
        return refusal;
    TransferCode code = hello();
    if (code != TransferCode::kSuccess) return code;
    upload_ = std::make_unique<Upload>(link_, files_, localName_);
    code = request(remoteName);
    if (code == TransferCode::kUserBreak && link_.peerBrokeOff())
        code = TransferCode::kFileNotThere;
    return code == TransferCode::kSuccess ? code : finish(code);
}

// Up to the header of the file.
TransferCode KermitMultidll::request(std::string_view remoteName) {
    KermitPacket packet;
    TransferCode code = link_.request({'R', 0, encodeWhole(remoteName, {})}, "S", packet);
    if (code == TransferCode::kSuccess) code = upload_->receiver.accept(packet, ownParameters());
    if (code != TransferCode::kSuccess) return code;
    code = upload_->receiver.step();
    if (code == TransferCode::kSuccess) return TransferCode::kUnknownResponse;  // no file at all
    return code == TransferCode::kUnsuccessfulOrMore ? TransferCode::kSuccess : code;
}

TransferCode KermitMultidll::HM_upload2(std::int32_t& bytes, std::int32_t& packets) {
    if (!upload_) return TransferCode::kIllegalCommand;
    const TransferCode code = upload_->receiver.step();
    report(upload_->receiver.progress(), bytes, packets);
    return code == TransferCode::kUnsuccessfulOrMore ? code : finish(code);
}

std::int32_t KermitMultidll::HM_get_return_string_length(std::span<char, kReturnString> text) {
    const std::string_view name = std::string_view(localName_).substr(0, kReturnString - 1);
    if (!name.empty()) {
        std::fill(text.begin(), text.end(), '\0');
        std::copy(name.begin(), name.end(), text.begin());
    }
    return static_cast<std::int32_t>(std::find(text.begin(), text.end(), '\0') - text.begin());
}

TransferCode KermitMultidll::HM_download1(std::int32_t /*port*/, char /*terminal*/,
                                          std::string_view localName, std::string_view remoteName,
                                          std::int32_t& totalSize) {
    if (const auto refusal = checkCall(remoteName); refusal != TransferCode::kSuccess)
        return refusal;
    std::uint64_t size = 0;
    std::shared_ptr<ByteSource> source;
    try {
        size = files_.size(localName);
        source = files_.open(localName);
    } catch (const RuntimeError& error) {
        const int number = error.number();
        return number == error_number::kFileNotFound || number == error_number::kPathNotFound
                   ? TransferCode::kFileNotThere
                   : TransferCode::kFileOpenError;
    }
    constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
    totalSize = static_cast<std::int32_t>(std::min(size, kMost));
    TransferCode code = hello();
    if (code != TransferCode::kSuccess) return code;
    download_ = std::make_unique<KermitSender>(link_, piecesOf(source));
    code = download_->begin(ownParameters(), 'F', remoteName);
    if (code == TransferCode::kSuccess) code = download_->describe(size);
    return code == TransferCode::kSuccess ? code : finish(code);
}

TransferCode KermitMultidll::HM_download2(std::int32_t& bytes, std::int32_t& packets) {
    if (!download_) return TransferCode::kIllegalCommand;
    const TransferCode code = download_->step();
    report(download_->progress(), bytes, packets);
    return code == TransferCode::kUnsuccessfulOrMore ? code : finish(code);
}

TransferCode KermitMultidll::finish(TransferCode code) {
    upload_.reset();
    download_.reset();
    return code;
}

void KermitMultidll::HM_set_ESC_delay(std::int32_t value) {
    patience_.breakDelay = std::clamp(value, 10, 1000);
}

void KermitMultidll::HM_set_NAK_delay(std::int32_t value) {
    patience_.nakDelay = std::clamp(value, 0, 5000);
}

void KermitMultidll::HM_set_time_out(std::int32_t value) {
    patience_.timeOut = 1000 * std::clamp(value, 1, 60);
}

std::int32_t KermitMultidll::HM_version() { return kVersion; }

}  // namespace kalvo
