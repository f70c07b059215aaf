// The one exception of the system: a run-time error with its number and its text.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace kalvo {

// Numbers of the run-time errors the system raises. They are the ones users and
// integrators know from the platform, the database engine and the serial control.
namespace error_number {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileExists = 58;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kDiskFull = 61;
inline constexpr int kTooManyFiles = 67;
inline constexpr int kDeviceIo = 57;
inline constexpr int kInvalidNull = 94;
inline constexpr int kFunctionNotFound = 453;
inline constexpr int kBadFormat = 321;
inline constexpr int kDataNoCurrentRow = 3021;
inline constexpr int kDataDuplicate = 3022;
inline constexpr int kDataFileNotFound = 3024;
inline constexpr int kDataNoAccess = 3051;
inline constexpr int kDataMissingParameter = 3061;
inline constexpr int kDataSelectExecuted = 3065;
inline constexpr int kDataSyntax = 3075;
inline constexpr int kDataUnknownTable = 3078;
inline constexpr int kDataInvalidOperation = 3219;
inline constexpr int kDataUnknownColumn = 3265;
inline constexpr int kDataFormat = 3343;
inline constexpr int kDataLocked = 3260;
inline constexpr int kDataReadOnly = 3027;
inline constexpr int kDataDisk = 3043;
inline constexpr int kPortInvalid = 8002;
inline constexpr int kPortAlreadyOpen = 8005;
inline constexpr int kPortIo = 8012;
inline constexpr int kPortSettings = 380;
inline constexpr int kPortNotOpen = 8018;
}  // namespace error_number

// A failed statement. `description` is French, in code page 1252, ready to be
// shown; `what()` carries the same bytes.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    [[nodiscard]] int number() const noexcept { return number_; }
    [[nodiscard]] std::string description() const { return what(); }

private:
    int number_;
};

}  // namespace kalvo
