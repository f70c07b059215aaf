#include "platform/linux/port_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/support/system_bindings.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

namespace fs = std::filesystem;

// A device folder and a system folder of the test's own.
struct PortNamesTest : ::testing::Test {
    testing::TemporaryFolder folder;
    const fs::path root = fs::canonical(folder.path());
    const std::string settings = folder / "PortSerie.ini";
    testing::SystemProfiles ini;

    PortNamesTest() {
        fs::create_directories(root / "dev/pts");
        fs::create_directories(root / "sys/class/tty");
    }

    static void write(const fs::path& file, const std::string& text) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text << "\n";
    }
    std::string addDevice(const std::string& name) {
        write(root / "dev" / name, "");
        return (root / "dev" / name).string();
    }
    // `type`: the kernel's UART type, empty when it does not tell.
    std::string addBuiltIn(const std::string& name, const std::string& type) {
        const fs::path entry = root / "sys/class/tty" / name;
        fs::create_directories(entry);
        if (!type.empty()) write(entry / "type", type);
        return addDevice(name);
    }
    std::string addUsb(const std::string& name, const std::string& product,
                       const std::string& driver) {
        const fs::path usb = root / "sys/devices/usb1" / ("port-" + name);
        const fs::path device = usb / "interface" / name;
        write(usb / "product", product);
        fs::create_directories(device);
        fs::create_directories(root / "sys/bus/drivers" / driver);
        fs::create_symlink(root / "sys/bus/drivers" / driver, device / "driver");
        fs::create_directories(root / "sys/class/tty" / name);
        fs::create_symlink(device, root / "sys/class/tty" / name / "device");
        return addDevice(name);
    }
    LinuxPortNames names() {
        return {ini, settings, (root / "dev").string(), (root / "sys").string()};
    }
};

TEST_F(PortNamesTest, DevicesCountInFamiliesAndByTheirNumbers) {
    const auto ports = names();
    EXPECT_EQ(ports.resolve(1), "") << "devices that come later are found";
    const auto acm = addDevice("ttyACM0");
    const auto usb10 = addDevice("ttyUSB10");
    const auto usb9 = addDevice("ttyUSB9");
    const auto serial1 = addBuiltIn("ttyS1", "4");
    addBuiltIn("ttyS0", "0");  // a node without hardware
    const auto serial2 = addBuiltIn("ttyS2", "");
    for (const char* other : {"tty1", "ttyS", "ttyUSB", "ttyUSBx", "ttyUSB1x", "ttyAMA0", "ttyS-1"})
        addDevice(other);

    const std::vector<std::string> expected = {serial1, serial2, usb9, usb10, acm};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(ports.resolve(static_cast<int>(i) + 1), expected[i]);
    for (const int number : {0, -1, 6, 256, 257}) EXPECT_EQ(ports.resolve(number), "") << number;
}

TEST_F(PortNamesTest, TheSettingsFileGoesFirstAndMovesNoOtherNumber) {
    addDevice("ttyUSB0");
    const auto second = addDevice("ttyUSB1");
    ini.write(settings, "Ports", "COM1", " /dev/serial/by-id/usb-caf\xE9 ");
    ini.write(settings, "Ports", "COM20", "/dev/pts/4");

    const auto ports = names();
    EXPECT_EQ(ports.resolve(1), "/dev/serial/by-id/usb-café");
    EXPECT_EQ(ports.resolve(2), second);
    EXPECT_EQ(ports.resolve(3), "");
    EXPECT_EQ(ports.resolve(20), "/dev/pts/4");
}

TEST_F(PortNamesTest, TheListDescribesEachPort) {
    addBuiltIn("ttyS0", "4");
    const auto usb = addUsb("ttyUSB0", "Lecteur n° 5", "ftdi_sio");
    addUsb("ttyACM0", "", "cdc_acm");
    addDevice("pts/7");
    fs::create_directories(root / "dev/serial/by-id");
    fs::create_symlink(usb, root / "dev/serial/by-id/usb-reader");
    const auto configure = [&](const char* key, const char* device) {
        ini.write(settings, "Ports", key, (root / "dev" / device).string());
    };
    configure("COM5", "serial/by-id/usb-reader");
    configure("COM6", "pts/7");
    configure("COM256", "ttyUSB99");

    std::vector<std::string> rows;
    for (const PortEntry& entry : names().list())
        rows.push_back(std::to_string(entry.number) + " " +
                       entry.device.substr((root / "dev/").string().size()) + ": " +
                       toUtf8(entry.description));
    EXPECT_THAT(rows, ::testing::ElementsAre(
                          "1 ttyS0: port série intégré", "2 ttyUSB0: Lecteur n° 5 (ftdi_sio)",
                          "3 ttyACM0: appareil USB (cdc_acm)",
                          "5 serial/by-id/usb-reader: Lecteur n° 5 (ftdi_sio)",
                          "6 pts/7: pseudo-terminal", "256 ttyUSB99: introuvable"));
}

}  // namespace
}  // namespace kalvo
