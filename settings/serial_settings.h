// The serial settings file PortSerie.ini.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/profile_files.h"
#include "platform/serial_port.h"
#include "text/ansi_text.h"

namespace kalvo {

// Section and keys of PortSerie.ini.
namespace port_serie {
inline constexpr std::string_view kSection = "Port_série"_ansi;
inline constexpr std::string_view kPort = "Port";
inline constexpr std::string_view kDataBits = "Bit de donnée"_ansi;
inline constexpr std::string_view kParity = "Bit de parité"_ansi;
inline constexpr std::string_view kStopBits = "Bit d'arrêt"_ansi;
inline constexpr std::string_view kSpeed = "Vitesse";
inline constexpr std::string_view kProtocol = "Protocol";
inline constexpr std::string_view kFlow = "Flux";
inline constexpr std::string_view kPortActive = "PortActif";
inline constexpr std::string_view kReplayFile = "Fichier";
inline constexpr std::string_view kReplayFolder = "Repertoire";
}  // namespace port_serie

// Devices of port numbers, a section of the same file: keys COM1, COM2, ...
inline constexpr std::string_view kPortsSection = "Ports";

// Makes a port number keep meaning the device it means now, where the file does not name one
// and the device can be told from others.
void storePortIdentity(ProfileFiles& profiles, std::string_view applicationFolder,
                       const SerialPort& port, int number);

// The speeds a user can choose stand in Touche.ini, keys 1 to 16.
inline constexpr std::string_view kSpeedSection = "Vitesses";
inline constexpr std::size_t kSpeeds = 16;

// One value of the file; empty when missing.
[[nodiscard]] std::string readPortSerie(ProfileFiles& profiles, std::string_view applicationFolder,
                                        std::string_view key);

// Whether the program opens the port at all.
[[nodiscard]] bool portActive(ProfileFiles& profiles, std::string_view applicationFolder);

// Whether the stored speed, a text, is there but no number: no port opens with it.
[[nodiscard]] bool unusableSpeed(std::string_view speed);

// The stored flow control text when it stands for no flow control there is; empty otherwise.
[[nodiscard]] std::string unknownFlow(ProfileFiles& profiles, std::string_view applicationFolder);

// The line settings as the serial control wants them: speed, parity letter, data
// bits and stop bits joined by ",", the numbers cut to their integer part, the
// parity as it stands in the file.
[[nodiscard]] std::string lineSettings(ProfileFiles& profiles, std::string_view applicationFolder);

// The stored flow control; none when it is not 0 to 3.
[[nodiscard]] Handshaking storedHandshaking(ProfileFiles& profiles,
                                            std::string_view applicationFolder);

// Gives a closed port its line settings and the way it is read: an event for every
// character, text, one character at a time. RuntimeError 380 for settings it refuses.
void configureLine(SerialPort& port, std::string_view settings, Handshaking handshaking);

}  // namespace kalvo
