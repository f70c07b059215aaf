#include "transfer/transfer_code_text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kalvo {

namespace {

struct CodeText {
    TransferCode code;
    std::string_view text;
};

// Misspellings included: users look them up in the terminal's manual.
constexpr std::array kTexts = std::to_array<CodeText>({
    {TransferCode::kSuccess, "Succesfull"},
    {TransferCode::kUnsuccessfulOrMore, "Unsuccessful or successflly download/upload one packed"},
    {TransferCode::kIllegalCommand, "Illegal command"},
    {TransferCode::kNak, "Host get NAK"},
    {TransferCode::kTimeOut, "Time out"},
    {TransferCode::kUnknownResponse, "Get unknown response"},
    {TransferCode::kBlockCheckError, "Return string BBC error"},
    {TransferCode::kNoData, "No data to be enquired"},
    {TransferCode::kUserBreak, "User press ESC to break"},
    {TransferCode::kPowerSavingOffFailed, "Set Power saving off fail"},
    {TransferCode::kPowerFailure, "Power failure"},
    {TransferCode::kProcessorException, "Processor exception occurred"},
    {TransferCode::kResetByHost, "Reset by host"},
    {TransferCode::kUserReset, "User reset"},
    {TransferCode::kApplicationReset, "Application reset"},
    {TransferCode::kColdStart, "Cold start"},
    {TransferCode::kWarmStart, "Warm start"},
    {TransferCode::kDiagnosticState, "Terminal in diagnostic state"},
    {TransferCode::kAlreadyStarted, "Terminal already start"},
    {TransferCode::kInvalidParameterCount, "Invalid number of parameter"},
    {TransferCode::kFileNotThere, "File doesn't exist"},
    {TransferCode::kIllegalFileName, "Illegal file name"},
    {TransferCode::kFileExistsRename, "File already exist ,upload file name to be changed"},
    {TransferCode::kFileExistsNoRename, "File already exist ,system can't change file name"},
    {TransferCode::kFileOpenError, "File open error"},
    {TransferCode::kNoProgram, "No program is executed"},
    {TransferCode::kRamDiskNotEmpty, "RAM disk isn't empty"},
    {TransferCode::kOutOfMemory, "Out of memory size"},
    {TransferCode::kUploadMode, "Upload mode"},
});

}  // namespace

std::string transferCodeText(TransferCode code) {
    const auto* const found = std::find_if(
        kTexts.begin(), kTexts.end(), [code](const CodeText& entry) { return entry.code == code; });
    if (found != kTexts.end()) return std::string(found->text);
    return "Undefined error: " + std::to_string(static_cast<std::int32_t>(code));
}

}  // namespace kalvo
