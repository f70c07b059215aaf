// The dialog offered when the configured port cannot be opened.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "editor/row_list.h"
#include "platform/profile_files.h"
#include "platform/serial_port.h"

namespace kalvo {

// "COM 1" to "COM 20".
[[nodiscard]] std::vector<std::string> portRows();

// The same with the device behind each port that has one.
[[nodiscard]] RowList portsWithDevices(RowList ports, const std::vector<std::string>& devices);

// Whether that row can be chosen: ports 10 and 20 are stored as port 1.
[[nodiscard]] bool portOffered(int row);

// Stores the row's port, and what tells its device from others: its index + 1 when the row's text
// ends in a digit other than 0, port 1 for every other row (10 and 20 included) and for no row.
void storePortChoice(ProfileFiles& profiles, std::string_view applicationFolder,
                     const SerialPort& serialPort, int row);

}  // namespace kalvo
