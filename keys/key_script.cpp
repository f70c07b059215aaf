#include "keys/key_script.h"

#include <algorithm>

#include "keys/key_names.h"
#include "platform/keyboard_input.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::uint8_t kEnterCode = 0x0D;

Key named(std::uint8_t code) { return {Key::Kind::kNamed, code}; }

Key literal(char character) { return {Key::Kind::kLiteral, static_cast<std::uint8_t>(character)}; }

bool isNumLock(Key key) { return key.kind == Key::Kind::kNamed && key.code == kVkNumLock; }

char prefixOf(Key::Kind modifier) {
    if (modifier == Key::Kind::kShift) return '+';
    return modifier == Key::Kind::kControl ? '^' : '%';
}

// The length of a braced group: up to the last "}" before the next "{" that follows
// a "}", so that "}" and "{" can stand in braces themselves.
std::optional<std::size_t> groupLength(ExpandedScript afterBrace) {
    std::optional<std::size_t> length;
    for (std::size_t i = 0; !afterBrace.atEnd(); ++i) {
        const char c = afterBrace.take();
        if (c == '}') length = i;
        if (c == '{' && length) break;
    }
    return length;
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
        for (const char digit : std::to_string(oemCode(character)))
            expanded.append("{NUMPAD").append(1, digit).append(1, '}');
        expanded += "){NUMLOCK}";
    }
    return expanded;
}

char ExpandedScript::take() {
    if (offset_ < expansion_.size()) return expansion_[offset_++];
    expansion_ = ExpandAltNumpad(rest_.substr(0, 1), *oemCode_);
    rest_.remove_prefix(1);
    offset_ = 1;
    return expansion_.front();
}

void ExpandedScript::dropRest() {
    rest_ = {};
    offset_ = expansion_.size();
}

std::optional<KeyEvent> KeyScriptReader::next() {
    while (pendingPosition_ == pending_.size()) {
        pending_.clear();
        pendingPosition_ = 0;
        if (repetition_.remaining > 0)
            typeNextRound();
        else if (!script_.atEnd())
            readOne();
        else if (!ended_)
            endScript();
        else
            return std::nullopt;
    }
    return pending_[pendingPosition_++];
}

void KeyScriptReader::stop() {
    script_.dropRest();
    repetition_.remaining = 0;
}

KeyScriptReader::Continuation KeyScriptReader::continuation() const {
    Continuation left{script_.taken(), {}};
    for (const Key modifier : heldModifiers_) left.lead += prefixOf(modifier.kind);
    const bool repeating = repetition_.remaining > 0;
    if (groupOpen_ || (repeating && !left.lead.empty())) left.lead += '(';
    if (repeating) left.lead += scriptOf(repetition_);
    if (!groupOpen_ && repeating && !heldModifiers_.empty()) left.lead += ')';
    return left;
}

std::string KeyScriptReader::scriptOf(const Repetition& repetition) {
    const auto group = [](std::string_view name, std::int32_t count) {
        return "{" + std::string(name) + " " + std::to_string(count) + "}";
    };
    if (repetition.text.empty())
        return group(nameOfKey(repetition.named.code), repetition.remaining);
    std::string script;
    for (std::size_t i = repetition.position; repetition.position > 0 && i < repetition.text.size();
         ++i)
        script += group(repetition.text.substr(i, 1), 1);
    const std::int32_t whole = repetition.remaining - (repetition.position > 0 ? 1 : 0);
    return whole > 0 ? script + group(repetition.text, whole) : script;
}

void KeyScriptReader::readOne() {
    readFrom_ = script_.taken();
    const char c = script_.take();
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
        case '~': repeat({.text = {}, .named = named(kEnterCode), .remaining = 1}); break;
        default:
            type(literal(c));
            if (!groupOpen_) releaseHeld();
    }
}

void KeyScriptReader::readGroup() {
    const std::optional<std::size_t> length = groupLength(script_);
    if (!length) {
        script_.dropRest();
        return;
    }
    std::string content;
    for (std::size_t i = 0; i < *length; ++i) content.push_back(script_.take());
    script_.take();  // the closing brace

    const std::size_t blank = content.find(' ');
    const std::int32_t count =
        blank == std::string::npos
            ? 1
            : roundedLeadingNumber(std::string_view(content).substr(blank + 1));
    if (count == 0) {
        script_.dropRest();
        return;
    }
    content.resize(std::min(blank, content.size()));
    const std::int16_t code = KeyNameToCode(content);
    if (code > 0)
        repeat({.text = {}, .named = named(static_cast<std::uint8_t>(code)), .remaining = count});
    else
        repeat({.text = std::move(content), .named = {}, .remaining = count});
}

void KeyScriptReader::prefix(Key::Kind modifier) {
    heldModifiers_.push_back({modifier, 0});
    pending_.push_back({KeyEvent::Action::kDown, heldModifiers_.back()});
}

void KeyScriptReader::repeat(Repetition repetition) {
    repetition_ = std::move(repetition);
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
