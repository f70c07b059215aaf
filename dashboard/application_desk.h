// Applications.ini in the hands of its user.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/manner_trial.h"
#include "platform/platform.h"
#include "settings/manner_keys.h"

namespace kalvo {

// An entry as the file has it; empty values are left to the entries behind it.
struct ApplicationEntry {
    std::string name;
    std::array<std::string, kMannerKeys> values;  // by MannerKey
};

// The columns of the list: the name, then the keys.
inline constexpr int kApplicationColumns = 1 + kMannerKeys;
[[nodiscard]] std::string_view headingOf(int column);

class ApplicationDesk {
public:
    ApplicationDesk(const Platform& platform, std::string applicationFolder)
        : platform_(platform), folder_(std::move(applicationFolder)) {}

    // Reads the file again. `target` are the names of the application typed into last, the
    // one that counts most first; empty when it is not known.
    void refresh(std::vector<std::string> target);

    [[nodiscard]] const std::vector<ApplicationEntry>& rows() const { return rows_; }
    [[nodiscard]] std::string cellOf(int row, int column) const;
    // The row of an entry; -1 when there is none.
    [[nodiscard]] int rowOf(std::string_view name) const;
    // Whether the entry is about the application typed into last.
    [[nodiscard]] bool applies(int row) const;
    // Which application that was, and how it is typed into.
    [[nodiscard]] std::string targetText() const;

    // The number a key has in the file; nothing when it has none that means something.
    [[nodiscard]] std::optional<int> numberAt(int row, MannerKey key) const;
    // Index into allMethods(); nothing likewise.
    [[nodiscard]] std::optional<int> methodAt(int row) const;

    // The rest changes the file at once, and says so when that fails.
    //
    // Asks for a name, proposing the application typed into last; the name of the entry made,
    // or of the one that was there.
    std::optional<std::string> add();
    void setNumber(int row, MannerKey key, std::optional<int> value);
    void setMethod(int row, std::optional<int> method);
    // Once the user has agreed.
    void remove(int row);
    // Says what came of a trial and stores the entry it found, once the user has agreed.
    void take(const MannerTrial& trial);

private:
    [[nodiscard]] bool set(std::string_view entry, MannerKey key, std::string_view value);
    void reread();
    void sayNotStored();

    Platform platform_;
    std::string folder_;
    std::vector<ApplicationEntry> rows_;
    std::vector<std::string> target_;
};

}  // namespace kalvo
