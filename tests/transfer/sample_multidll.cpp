// A communication library of our own, for the test of loading one: it does nothing but
// answer with what it was given.
#include <cstdint>
#include <cstring>

#ifdef _WIN32
#define SAMPLE extern "C" __declspec(dllexport) std::int32_t __stdcall
#else
#define SAMPLE extern "C" __attribute__((visibility("default"))) std::int32_t
#endif

namespace {
using Number = std::int32_t;
Number kept[3] = {11, 22, 33};
// Tells arguments apart by their place.
Number length(const char* text) { return static_cast<Number>(std::strlen(text)); }
}  // namespace

SAMPLE HM_OpenCommPort(Number port, Number speed, Number data, Number parity, Number stop) {
    return port * 10000 + speed + data * 100 + parity * 10 + stop;
}
SAMPLE HM_CloseCommPort(Number port) { return port; }
SAMPLE HM_file_exist(Number port, char terminal, const char* name) {
    return port * 1000 + terminal * 10 + length(name);
}
SAMPLE HM_power_saving_off(Number port, char terminal) { return port * 100 + terminal; }
SAMPLE HM_power_saving_on(Number port, char terminal) { return port * 200 + terminal; }
SAMPLE HM_upload1(Number port, char terminal, const char* remote, const char* local) {
    return port * 1000 + terminal + length(remote) * 10000 + length(local) * 100000;
}
SAMPLE HM_get_return_string_length(char* text) {
    std::strcpy(text, "autre.txt");
    return length(text);
}
SAMPLE HM_upload2(Number* bytes, Number* packets) {
    *bytes += 10;
    *packets += 1;
    return 1;
}
SAMPLE HM_download1(Number port, char terminal, const char* local, const char* remote,
                    Number* size) {
    *size = 77;
    return port * 1000 + terminal + length(remote) * 10000 + length(local) * 100000;
}
SAMPLE HM_download2(Number* bytes, Number* packets) {
    *bytes += 20;
    *packets += 2;
    return 50;
}
SAMPLE HM_set_ESC_delay(Number value) { return kept[0] = value; }
SAMPLE HM_set_NAK_delay(Number value) { return kept[1] = value; }
SAMPLE HM_set_time_out(Number value) { return kept[2] = value; }
SAMPLE HM_get_ESC_delay() { return kept[0]; }
SAMPLE HM_get_NAK_delay() { return kept[1]; }
SAMPLE HM_get_time_out() { return kept[2]; }
#ifndef KALVO_SAMPLE_WITHOUT_VERSION
SAMPLE HM_version() { return 123; }
#endif
