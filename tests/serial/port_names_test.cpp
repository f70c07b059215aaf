#include "platform/linux/ports/port_names.h"

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
    // `socket` is where it is plugged in; an adapter without a serial number has "".
    std::string addUsb(const std::string& name, const std::string& product,
                       const std::string& driver, const std::string& socket = "1-1",
                       const std::string& serial = "") {
        const fs::path usb = root / "sys/devices/usb1" / socket;
        const fs::path device = usb / (socket + ":1.0") / name;
        write(usb / "product", product);
        write(usb / "idVendor", "1a86");
        write(usb / "idProduct", "7523");
        if (!serial.empty()) write(usb / "serial", serial);
        fs::create_directories(device);
        fs::create_directories(root / "sys/bus/drivers" / driver);
        fs::create_symlink(root / "sys/bus/drivers" / driver, device / "driver");
        fs::create_directories(root / "sys/class/tty" / name);
        fs::create_symlink(device, root / "sys/class/tty" / name / "device");
        return addDevice(name);
    }
    LinuxPortNames names() {
        return {ini, settings, SerialDevices((root / "dev").string(), (root / "sys").string())};
    }
    // Where the device of a number is now.
    std::string resolve(int number) {
        const PortDevice device = names().device(number);
        return device.locate ? device.locate() : "";
    }
    void unplug(const std::string& name) {
        fs::remove(root / "dev" / name);
        fs::remove_all(root / "sys/class/tty" / name);
    }
};

TEST_F(PortNamesTest, DevicesCountInFamiliesAndByTheirNumbers) {
    EXPECT_EQ(resolve(1), "") << "devices that come later are found";
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
        EXPECT_EQ(resolve(static_cast<int>(i) + 1), expected[i]);
    for (const int number : {0, -1, 6, 256, 257}) EXPECT_EQ(resolve(number), "") << number;
}

TEST_F(PortNamesTest, TheSettingsFileGoesFirstAndMovesNoOtherNumber) {
    const auto first = addDevice("ttyUSB0");
    const auto second = addDevice("ttyUSB1");
    ini.write(settings, "Ports", "COM1", " /dev/serial/by-id/usb-caf\xE9 ");
    ini.write(settings, "Ports", "COM20", "/dev/pts/4");

    EXPECT_EQ(resolve(1), "/dev/serial/by-id/usb-café");
    EXPECT_EQ(resolve(2), second);
    EXPECT_EQ(resolve(3), first) << "behind all that were found";
    EXPECT_EQ(resolve(4), "");
    EXPECT_EQ(resolve(20), "/dev/pts/4");
}

TEST_F(PortNamesTest, TheListDescribesEachPort) {
    addBuiltIn("ttyS0", "4");
    const auto usb = addUsb("ttyUSB0", "Lecteur n° 5", "ftdi_sio");
    addUsb("ttyACM0", "", "cdc_acm", "1-2");
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

TEST_F(PortNamesTest, ADeviceIsFollowedAndNoStrangerTakesItsPlace) {
    struct Adapter {
        const char* serial;
        const char* twin;  // the serial number of the other one
        bool linked;
    };
    for (const Adapter& adapter :
         {Adapter{"A1", "B2", true}, Adapter{"", "", false}, Adapter{"0001", "0001", false}}) {
        SCOPED_TRACE(adapter.serial);
        fs::remove_all(root / "sys");
        addUsb("ttyUSB0", "Lecteur", "ch341", "1-1", adapter.serial);
        addUsb("ttyUSB1", "Lecteur", "ch341", "1-2", adapter.twin);
        const fs::path link = root / "dev/serial/by-id/usb-Lecteur";
        const auto linkTo = [&](const char* name) {
            fs::create_directories(link.parent_path());
            fs::remove(link);
            fs::create_symlink(root / "dev" / name, link);
        };
        linkTo("ttyUSB0");
        const PortDevice device = names().device(1);
        EXPECT_EQ(device.identity, adapter.linked ? link.string() : "usb:1a86:7523@1-1:1.0");
        ini.write(settings, "Ports", "COM1", device.identity);
        EXPECT_EQ(names().device(1).identity, "") << "stored already";

        unplug("ttyUSB0");
        unplug("ttyUSB1");
        fs::remove(link);
        addUsb("ttyUSB0", "Lecteur", "ch341", "1-2", adapter.twin);
        for (const PortDevice& missed : {device, names().device(1)}) {
            EXPECT_FALSE(fs::exists(missed.locate()));
            EXPECT_THAT(missed.name, ::testing::HasSubstr(adapter.linked ? "usb-Lecteur"
                                                                         : "1a86:7523, prise 1-1"));
        }
        EXPECT_EQ(resolve(2), (root / "dev/ttyUSB0").string()) << "the stranger can be chosen";

        const auto moved = addUsb("ttyUSB5", "Lecteur", "ch341", "1-1", adapter.serial);
        linkTo("ttyUSB5");
        for (const PortDevice& back : {device, names().device(1)})
            EXPECT_EQ(fs::canonical(back.locate()), moved);
        ini.write(settings, "Ports", "COM1", "");
        unplug("ttyUSB5");
    }
}

}  // namespace
}  // namespace kalvo
