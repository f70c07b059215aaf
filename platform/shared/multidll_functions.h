// The functions of an installed communication library, found by name.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/multidll.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

// Our reading of the library's interface: functions of the system's own convention for
// libraries (on 32-bit Windows the one where the callee clears the stack), all numbers
// of 32 bits, texts zero-terminated, the terminal's identifier one character by value,
// what the library writes through a pointer.
#ifdef _WIN32
#define KALVO_MULTIDLL_CALL __stdcall
#else
#define KALVO_MULTIDLL_CALL
#endif

// The calls; who made it keeps the library loaded for as long.
class MultidllFunctions : public Multidll {
public:
    // The address of a function, null where there is none.
    using Resolver = std::function<void*(const char* name)>;

    // `localPath` makes a path of the workstation one that the library can open.
    // RuntimeError 453 naming the first function that is missing.
    MultidllFunctions(const Resolver& resolve,
                      std::function<std::string(std::string_view)> localPath)
        : localPath_(std::move(localPath)) {
        find(resolve, "HM_OpenCommPort", open_);
        find(resolve, "HM_CloseCommPort", close_);
        find(resolve, "HM_file_exist", exist_);
        find(resolve, "HM_power_saving_off", powerOff_);
        find(resolve, "HM_power_saving_on", powerOn_);
        find(resolve, "HM_upload1", upload1_);
        find(resolve, "HM_get_return_string_length", returnString_);
        find(resolve, "HM_upload2", upload2_);
        find(resolve, "HM_download1", download1_);
        find(resolve, "HM_download2", download2_);
        find(resolve, "HM_set_ESC_delay", setEsc_);
        find(resolve, "HM_set_NAK_delay", setNak_);
        find(resolve, "HM_set_time_out", setTimeOut_);
        find(resolve, "HM_get_ESC_delay", getEsc_);
        find(resolve, "HM_get_NAK_delay", getNak_);
        find(resolve, "HM_get_time_out", getTimeOut_);
        find(resolve, "HM_version", version_);
    }

    TransferCode HM_OpenCommPort(std::int32_t port, std::int32_t speed, std::int32_t dataBits,
                                 std::int32_t parity, std::int32_t stopBits) override {
        return code(open_(port, speed, dataBits, parity, stopBits));
    }
    TransferCode HM_CloseCommPort(std::int32_t port) override { return code(close_(port)); }
    TransferCode HM_file_exist(std::int32_t port, char terminal,
                               std::string_view remoteName) override {
        return code(exist_(port, terminal, std::string(remoteName).c_str()));
    }
    TransferCode HM_power_saving_off(std::int32_t port, char terminal) override {
        return code(powerOff_(port, terminal));
    }
    TransferCode HM_power_saving_on(std::int32_t port, char terminal) override {
        return code(powerOn_(port, terminal));
    }
    TransferCode HM_upload1(std::int32_t port, char terminal, std::string_view remoteName,
                            std::string_view localName) override {
        return code(upload1_(port, terminal, std::string(remoteName).c_str(),
                             localPath_(localName).c_str()));
    }
    std::int32_t HM_get_return_string_length(std::span<char, kReturnString> text) override {
        return returnString_(text.data());
    }
    TransferCode HM_upload2(std::int32_t& bytes, std::int32_t& packets) override {
        return code(upload2_(&bytes, &packets));
    }
    TransferCode HM_download1(std::int32_t port, char terminal, std::string_view localName,
                              std::string_view remoteName, std::int32_t& totalSize) override {
        return code(download1_(port, terminal, localPath_(localName).c_str(),
                               std::string(remoteName).c_str(), &totalSize));
    }
    TransferCode HM_download2(std::int32_t& bytes, std::int32_t& packets) override {
        return code(download2_(&bytes, &packets));
    }
    void HM_set_ESC_delay(std::int32_t value) override { setEsc_(value); }
    void HM_set_NAK_delay(std::int32_t value) override { setNak_(value); }
    void HM_set_time_out(std::int32_t value) override { setTimeOut_(value); }
    [[nodiscard]] std::int32_t HM_get_ESC_delay() override { return getEsc_(); }
    [[nodiscard]] std::int32_t HM_get_NAK_delay() override { return getNak_(); }
    [[nodiscard]] std::int32_t HM_get_time_out() override { return getTimeOut_(); }
    [[nodiscard]] std::int32_t HM_version() override { return version_(); }

private:
    template <typename... Arguments>
    using Function = std::int32_t(KALVO_MULTIDLL_CALL*)(Arguments...);
    using Number = std::int32_t;
    using Text = const char*;

    template <typename Pointer>
    static void find(const Resolver& resolve, const char* name, Pointer& function) {
        function = reinterpret_cast<Pointer>(resolve(name));
        if (function != nullptr) return;
        throw RuntimeError(
            error_number::kFunctionNotFound,
            std::string("La bibliothèque Multidll installée n'a pas la fonction "_ansi) + name +
                ".");
    }
    static TransferCode code(std::int32_t value) { return static_cast<TransferCode>(value); }

    std::function<std::string(std::string_view)> localPath_;
    Function<Number, Number, Number, Number, Number> open_ = nullptr;
    Function<Number> close_ = nullptr;
    Function<Number, char, Text> exist_ = nullptr;
    Function<Number, char> powerOff_ = nullptr;
    Function<Number, char> powerOn_ = nullptr;
    Function<Number, char, Text, Text> upload1_ = nullptr;
    Function<char*> returnString_ = nullptr;
    Function<Number*, Number*> upload2_ = nullptr;
    Function<Number, char, Text, Text, Number*> download1_ = nullptr;
    Function<Number*, Number*> download2_ = nullptr;
    Function<Number> setEsc_ = nullptr;
    Function<Number> setNak_ = nullptr;
    Function<Number> setTimeOut_ = nullptr;
    Function<> getEsc_ = nullptr;
    Function<> getNak_ = nullptr;
    Function<> getTimeOut_ = nullptr;
    Function<> version_ = nullptr;
};

// The errors of loading, the same on every system; `path` and `reason` in code page 1252.
[[nodiscard]] inline RuntimeError otherBitness(std::string_view path) {
    return {error_number::kFileNotFound,
            std::string("La bibliothèque "_ansi) + std::string(path) +
                std::string(" n'est pas faite pour un programme de "_ansi) +
                std::to_string(8 * sizeof(void*)) +
                std::string(" bits : il en faut la version de "_ansi) +
                std::to_string(8 * sizeof(void*)) + " bits."};
}
[[nodiscard]] inline RuntimeError notLoaded(std::string_view path, std::string_view reason) {
    return {error_number::kFileNotFound, std::string("La bibliothèque "_ansi) + std::string(path) +
                                             std::string(" ne peut pas être chargée : "_ansi) +
                                             std::string(reason)};
}

}  // namespace kalvo
