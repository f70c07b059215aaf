// The key-script language: literal characters, braced key names with a repeat
// count, the prefixes + ^ % (Shift, Control, Alt), parentheses and ~ (Enter).
//
//   abc         the characters            {TAB}  {F5 3}    keys, three times F5
//   +a  ^%{DEL} modifiers for one key     +(ab)            for a group of keys
//   {+} {}} {{} signs of the language     ~                Enter
//
// The reader turns a script into key events, one at a time; it neither knows a
// keyboard nor its layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kalvo {

// One key as a script names it.
struct Key {
    enum class Kind : std::uint8_t {
        kShift,  // the modifiers, reached through their prefixes only
        kControl,
        kAlt,
        kNamed,    // code: virtual key of the name table
        kLiteral,  // code: a code page 1252 character
    };
    Kind kind = Kind::kLiteral;
    std::uint8_t code = 0;

    friend bool operator==(const Key&, const Key&) = default;
};

// What the reader asks the injector to do next.
struct KeyEvent {
    enum class Action : std::uint8_t { kDown, kUp, kFlipNumLock };
    Action action = Action::kDown;
    Key key;

    friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

// Which locks the braced lock keys of a script have left flipped.
struct LockTrackers {
    bool capsLock = false;
    bool numLock = false;
    bool scrollLock = false;

    friend bool operator==(const LockTrackers&, const LockTrackers&) = default;
};

// Replaces every character of code 128 and above by the keys of its Alt+keypad
// code, inside braces too. `oemCode` gives a character's code in the OEM code page.
[[nodiscard]] std::string ExpandAltNumpad(std::string_view script,
                                          const std::function<unsigned char(char)>& oemCode);

// A script as it reads after ExpandAltNumpad, worked out character by character, so
// that the rewritten text never stands in memory. Copies are independent cursors.
class ExpandedScript {
public:
    ExpandedScript(std::string_view script, const std::function<unsigned char(char)>& oemCode)
        : size_(script.size()), rest_(script), oemCode_(&oemCode) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty() && offset_ == expansion_.size(); }
    // Whether nothing of a rewritten character is still to come.
    [[nodiscard]] bool betweenCharacters() const { return offset_ == expansion_.size(); }
    // The next character; call only before the end.
    char take();
    void dropRest();
    // The characters of the script that have been taken whole.
    [[nodiscard]] std::size_t taken() const {
        return size_ - rest_.size() - (betweenCharacters() ? 0 : 1);
    }

private:
    std::size_t size_;
    std::string_view rest_;
    const std::function<unsigned char(char)>* oemCode_;
    // What the character before `rest_` became, and how much of it has been taken.
    std::string expansion_;
    std::size_t offset_ = 0;
};

// Reads a script from left to right, characters of code 128 and above as
// ExpandAltNumpad rewrites them. Each event is worked out when it is asked for, so
// neither a long script nor a large repeat count takes memory. A missing "}" or a
// repeat count of 0 ends the script; held modifiers are released at the end in every
// case. The text must outlive the reader.
class KeyScriptReader {
public:
    KeyScriptReader(std::string_view script, std::function<unsigned char(char)> oemCode)
        : oemCode_(std::move(oemCode)), script_(script, oemCode_) {}
    KeyScriptReader(const KeyScriptReader&) = delete;
    KeyScriptReader& operator=(const KeyScriptReader&) = delete;

    // The next event; nothing when the script is done.
    std::optional<KeyEvent> next();

    // The trackers after the events taken so far.
    [[nodiscard]] LockTrackers locks() const { return locks_; }

    // Whether the events taken so far leave no key down but held modifiers, and no
    // character half-way through its Alt+keypad code.
    [[nodiscard]] bool betweenKeys() const {
        return pendingPosition_ == pending_.size() && script_.betweenCharacters();
    }
    // The characters of the script, from its beginning, all of whose events were taken.
    [[nodiscard]] std::size_t typed() const {
        return betweenKeys() && repetition_.remaining <= 0 ? script_.taken() : readFrom_;
    }
    // Ends the script here, between keys: what is still to come is the release of the held
    // modifiers.
    void stop();
    // What goes on here later, between keys: the script from `place` on, behind `lead`,
    // which presses again what is held and types what is left of a repetition.
    struct Continuation {
        std::size_t place = 0;
        std::string lead;
    };
    [[nodiscard]] Continuation continuation() const;

private:
    // Keys being typed over and over: one named key or the letters of a text.
    struct Repetition {
        std::string text;  // the literal text; empty for a named key
        Key named;
        std::int32_t remaining = 0;  // rounds left, the current one included
        std::size_t position = 0;    // next character of `text`
    };

    [[nodiscard]] static std::string scriptOf(const Repetition& repetition);

    void readOne();
    void readGroup();
    void prefix(Key::Kind modifier);
    void repeat(Repetition repetition);
    void typeNextRound();
    void type(Key key);
    void trackLock(Key key);
    void releaseHeld();
    void endScript();

    std::function<unsigned char(char)> oemCode_;
    ExpandedScript script_;
    std::vector<Key> heldModifiers_;
    bool groupOpen_ = false;
    bool ended_ = false;
    std::size_t readFrom_ = 0;  // where in the script the pending events come from
    LockTrackers locks_;
    Repetition repetition_;
    std::vector<KeyEvent> pending_;
    std::size_t pendingPosition_ = 0;
};

}  // namespace kalvo
