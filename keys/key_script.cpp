#include "keys/key_script.h"

#include "core/number_text.h"
#include "keys/key_names.h"
#include "platform/keyboard_input.h"

namespace kalvo {

namespace {

constexpr std::uint8_t kEnterKey = 0x0D;

Key named(std::uint8_t code) { return {Key::Kind::kNamed, code}; }

Key literal(char character) { return {Key::Kind::kLiteral, static_cast<std::uint8_t>(character)}; }

bool isNumLock(Key key) { return key.kind == Key::Kind::kNamed && key.code == kVkNumLock; }

// Where a braced group ends: the last "}" before the next "{" that follows a "}",
// so that "}" and "{" can stand in braces themselves.
std::size_t groupEnd(std::string_view afterBrace) {
    std::size_t end = std::string_view::npos;
    for (std::size_t i = 0; i < afterBrace.size(); ++i) {
        if (afterBrace[i] == '}') end = i;
        if (afterBrace[i] == '{' && end != std::string_view::npos) break;
    }
    return end;
}

}  // namespace

std::string ExpandAltNumpad(std::string_view script,
                            const std::function<unsigned char(char)>& oemCode) {
    std::string expanded;
    expanded.reserve(script.size());
    for (const char character : script) {
        if (static_cast<unsigned char>(character) < 128) {
            expanded.push_back(character);
            continue;
        }
        expanded += "{NUMLOCK}%(";
        for (const char digit : std::to_string(oemCode(character))) {
            expanded += "{NUMPAD";
            expanded.push_back(digit);
            expanded.push_back('}');
        }
        expanded += "){NUMLOCK}";
    }
    return expanded;
}

std::optional<KeyEvent> KeyScriptReader::next() {
    while (pendingPosition_ == pending_.size()) {
        pending_.clear();
        pendingPosition_ = 0;
        if (repetition_.remaining > 0)
            typeNextRound();
        else if (!rest_.empty())
            readOne();
        else if (!ended_)
            endScript();
        else
            return std::nullopt;
    }
    return pending_[pendingPosition_++];
}

void KeyScriptReader::readOne() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    switch (c) {
        case '+': prefix(Key::Kind::kShift); break;
        case '^': prefix(Key::Kind::kControl); break;
        case '%': prefix(Key::Kind::kAlt); break;
        case '(': groupOpen_ = true; break;
        case ')':
            groupOpen_ = false;
            releaseHeld();
            break;
        case '{': readGroup(); break;
        case '~': repeat({.text = {}, .named = named(kEnterKey), .remaining = 1}); break;
        default:
            type(literal(c));
            if (!groupOpen_) releaseHeld();
    }
}

void KeyScriptReader::readGroup() {
    const std::size_t end = groupEnd(rest_);
    if (end == std::string_view::npos) {
        rest_ = {};
        return;
    }
    const std::string_view content = rest_.substr(0, end);
    rest_.remove_prefix(end + 1);

    const std::size_t blank = content.find(' ');
    const std::string_view name = content.substr(0, blank);
    const std::int32_t count =
        blank == std::string_view::npos ? 1 : roundedLeadingNumber(content.substr(blank + 1));
    if (count == 0) {
        rest_ = {};
        return;
    }
    const std::int16_t code = KeyNameToCode(name);
    if (code > 0)
        repeat({.text = {}, .named = named(static_cast<std::uint8_t>(code)), .remaining = count});
    else
        repeat({.text = name, .named = {}, .remaining = count});
}

void KeyScriptReader::prefix(Key::Kind modifier) {
    heldModifiers_.push_back({modifier, 0});
    pending_.push_back({KeyEvent::Action::kDown, heldModifiers_.back()});
}

void KeyScriptReader::repeat(const Repetition& repetition) {
    repetition_ = repetition;
    const bool nothingToType =
        repetition_.remaining < 0 || (repetition_.text.empty() && repetition_.named == Key{});
    if (!nothingToType) return;
    repetition_.remaining = 0;
    if (!groupOpen_) releaseHeld();
}

void KeyScriptReader::typeNextRound() {
    if (repetition_.text.empty()) {
        type(repetition_.named);
        trackLock(repetition_.named);
        --repetition_.remaining;
    } else {
        type(literal(repetition_.text[repetition_.position++]));
        if (repetition_.position == repetition_.text.size()) {
            repetition_.position = 0;
            --repetition_.remaining;
        }
    }
    if (repetition_.remaining == 0 && !groupOpen_) releaseHeld();
}

void KeyScriptReader::type(Key key) {
    if (isNumLock(key)) {
        pending_.push_back({KeyEvent::Action::kFlipNumLock, key});
        return;
    }
    pending_.push_back({KeyEvent::Action::kDown, key});
    pending_.push_back({KeyEvent::Action::kUp, key});
}

void KeyScriptReader::trackLock(Key key) {
    switch (key.code) {
        case kVkCapital: locks_.capsLock = !locks_.capsLock; break;
        case kVkNumLock: locks_.numLock = !locks_.numLock; break;
        case kVkScroll: locks_.scrollLock = !locks_.scrollLock; break;
        default: break;
    }
}

void KeyScriptReader::releaseHeld() {
    for (auto key = heldModifiers_.rbegin(); key != heldModifiers_.rend(); ++key)
        pending_.push_back({KeyEvent::Action::kUp, *key});
    heldModifiers_.clear();
}

void KeyScriptReader::endScript() {
    ended_ = true;
    releaseHeld();
}

}  // namespace kalvo
