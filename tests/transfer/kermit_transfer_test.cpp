#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <optional>
#include <random>

#include "platform/asio/asio_transfer_line.h"
#include "platform/linux/linux_file_system.h"
#include "tests/support/temporary_folder.h"
#include "tests/transfer/kermit_server.h"
#include "transfer/kermit/kermit_multidll.h"

namespace kalvo {
namespace {

using ::testing::AnyOf;
using testing::bytesOf;
using testing::writeBytes;

constexpr std::size_t kLarge = 10000000;

std::string randomBytes(std::size_t size) {
    std::mt19937 random(7);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

std::string everyByte() {
    std::string bytes;
    for (int round = 0; round < 40; ++round)
        for (int byte = 0; byte < 256; ++byte)
            bytes.append(static_cast<std::size_t>(round % 7 == 0 ? 1 + byte % 100 : 1),
                         static_cast<char>(byte));
    return bytes;
}

class KermitTransfer : public ::testing::Test {
protected:
    void serve(const std::string& setting = "set delay 1", int dataBits = 8) {
        server.emplace(cable.server.path(), remote.path(), setting);
        ASSERT_EQ(dll.HM_OpenCommPort(1, 921600, dataBits, 0, 1), TransferCode::kSuccess);
        dll.HM_set_time_out(1);
        ASSERT_TRUE(testing::waitUntil(
            [&] { return dll.HM_power_saving_off(1, 'A') == TransferCode::kSuccess; }));
    }
    void stop() {
        dll.HM_CloseCommPort(1);
        server.reset();
    }
    // Until the code is another one than "more", or `limit` packets have gone through.
    template <typename Step>
    TransferCode run(Step step, int limit = 1 << 30) {
        TransferCode code = TransferCode::kUnsuccessfulOrMore;
        for (int done = 0; code == TransferCode::kUnsuccessfulOrMore && done < limit; ++done)
            code = (dll.*step)(bytes, packets);
        return code;
    }
    TransferCode upload(const std::string& name, int limit = 1 << 30) {
        const TransferCode code = dll.HM_upload1(1, 'A', name, local / "got");
        return code == TransferCode::kSuccess ? run(&Multidll::HM_upload2, limit) : code;
    }
    TransferCode download(const std::string& name, int limit = 1 << 30) {
        const TransferCode code = dll.HM_download1(1, 'A', local / "put", name, total);
        return code == TransferCode::kSuccess ? run(&Multidll::HM_download2, limit) : code;
    }
    // A small file each way, after whatever went wrong before.
    void expectWorks() {
        writeBytes(remote / "after", "well");
        EXPECT_EQ(upload("after"), TransferCode::kSuccess);
        EXPECT_EQ(bytesOf(local / "got"), "well");
        std::filesystem::remove(local / "got");
        writeBytes(local / "put", "again");
        EXPECT_EQ(download("after2"), TransferCode::kSuccess);
        EXPECT_EQ(bytesOf(remote / "after2"), "again");
    }
    // A transfer that did not end well left nothing under a name.
    void expectNothingArrived() {
        EXPECT_FALSE(std::filesystem::exists(local / "got"));
        EXPECT_FALSE(std::filesystem::exists(local / "got.part"));
    }

    testing::TemporaryFolder remote;
    testing::TemporaryFolder local;
    testing::Cable cable;
    std::optional<testing::KermitServer> server;
    LinuxFileSystem files;
    AsioTransferLine line{[this](int) { return cable.client.path(); }};
    bool broken = false;
    KermitMultidll dll{line, files, [this] { return broken; }};
    std::int32_t bytes = -1;
    std::int32_t packets = -1;
    std::int32_t total = -1;
};

TEST_F(KermitTransfer, TellsWhetherAFileIsThere) {
    writeBytes(remote / "TESTFILE.$$$", "x");
    writeBytes(remote / "small.txt", "");
    for (const char* setting : {"set delay 1", KALVO_TERMINAL_PROGRAM}) {
        serve(setting);
        for (const auto& [name, code] : {std::pair{"TESTFILE.$$$", TransferCode::kSuccess},
                                         {"small.txt", TransferCode::kSuccess},
                                         {"missing.txt", TransferCode::kFileNotThere},
                                         {"", TransferCode::kIllegalFileName},
                                         {"*.txt", TransferCode::kIllegalFileName}})
            EXPECT_EQ(dll.HM_file_exist(1, 'A', name), code) << name << setting;
        EXPECT_EQ(upload("missing.txt"), TransferCode::kFileNotThere);
        EXPECT_EQ(upload(std::string(65, 'a')), TransferCode::kIllegalFileName);
        EXPECT_EQ(dll.HM_download1(1, 'A', local / "none", "x", total),
                  TransferCode::kFileNotThere);
        expectNothingArrived();
        expectWorks();
        std::filesystem::remove(local / "got");
        stop();
    }
    std::array<char, Multidll::kReturnString> name{};
    EXPECT_EQ(static_cast<std::size_t>(dll.HM_get_return_string_length(name)),
              (local / "got").size());
    EXPECT_EQ(name.data(), local / "got");
}

TEST_F(KermitTransfer, CarriesEveryContentBothWays) {
    struct Case {
        const char* setting;
        int dataBits;
        std::vector<std::string> contents;
    };
    for (const Case& c :
         {Case{"set block-check 3",
               8,
               {"", "x", everyByte(), "a\nb\r\n", "#~&Y", std::string(50000, 'r'),
                randomBytes(kLarge)}},
          Case{"set block-check 2", 8, {everyByte()}},
          Case{"set block-check 1, set send packet-length 90, set receive packet-length 90",
               8,
               {everyByte()}},
          Case{"set parity space", 7, {everyByte()}},
          Case{KALVO_TERMINAL_PROGRAM, 8, {"", everyByte(), randomBytes(200000)}}}) {
        serve(c.setting, c.dataBits);
        for (const std::string& content : c.contents) {
            writeBytes(local / "put", content);
            EXPECT_EQ(download("lower.case"), TransferCode::kSuccess) << c.setting;
            EXPECT_TRUE(bytesOf(remote / "lower.case") == content) << c.setting << content.size();
            EXPECT_EQ(static_cast<std::size_t>(total), content.size());
            EXPECT_EQ(static_cast<std::size_t>(bytes), content.size());
            EXPECT_EQ(packets > 0, !content.empty());
            EXPECT_EQ(upload("lower.case"), TransferCode::kSuccess) << c.setting;
            EXPECT_TRUE(bytesOf(local / "got") == content) << c.setting << content.size();
            EXPECT_EQ(static_cast<std::size_t>(bytes), content.size());
        }
        stop();
    }
    EXPECT_EQ(local.entries(), 2) << "nothing temporary is left";
}

TEST_F(KermitTransfer, OutlivesADisturbedLine) {
    serve();
    const std::string content = randomBytes(200000);
    writeBytes(local / "put", content);
    for (const bool missing : {false, true}) {
        (missing ? cable.drop : cable.flip) = 40009;
        EXPECT_EQ(download("copy"), TransferCode::kSuccess) << missing;
        EXPECT_TRUE(bytesOf(remote / "copy") == content) << missing;
        EXPECT_EQ(upload("copy"), TransferCode::kSuccess) << missing;
        EXPECT_TRUE(bytesOf(local / "got") == content) << missing;
        cable.drop = cable.flip = 0;
    }
}

TEST_F(KermitTransfer, EndsWithTheRightCodeAndWorksAgain) {
    serve();
    writeBytes(remote / "large", randomBytes(1000000));
    const auto breakAt = [&](auto start, auto step) {
        ASSERT_EQ(start(), TransferCode::kUnsuccessfulOrMore);
        broken = true;
        EXPECT_EQ(run(step), TransferCode::kUserBreak);
        broken = false;
        EXPECT_EQ(run(step), TransferCode::kIllegalCommand) << "it is over";
        expectNothingArrived();
        expectWorks();
    };
    breakAt([&] { return upload("large", 3); }, &Multidll::HM_upload2);
    writeBytes(local / "put", randomBytes(1000000));
    breakAt([&] { return download("copy", 3); }, &Multidll::HM_download2);

    using Step = TransferCode (Multidll::*)(std::int32_t&, std::int32_t&);
    for (const bool down : {false, true}) {
        const Step step = down ? Step{&Multidll::HM_download2} : Step{&Multidll::HM_upload2};
        const auto begin = [&] {
            writeBytes(local / "put", randomBytes(1000000));
            return down ? download("copy", 3) : upload("large", 3);
        };
        ASSERT_EQ(begin(), TransferCode::kUnsuccessfulOrMore);
        cable.flip = 50;
        const TransferCode disturbed = run(step);
        EXPECT_THAT(disturbed, AnyOf(TransferCode::kBlockCheckError, TransferCode::kTimeOut,
                                     TransferCode::kNak));
        cable.flip = 0;
        expectNothingArrived();
        expectWorks();

        ASSERT_EQ(begin(), TransferCode::kUnsuccessfulOrMore);
        cable.silent = true;
        EXPECT_EQ(run(step), TransferCode::kTimeOut);
        cable.silent = false;
        expectNothingArrived();
        expectWorks();
    }

    ASSERT_EQ(upload("large", 3), TransferCode::kUnsuccessfulOrMore);
    server->stop();
    cable.client.unplug();
    EXPECT_EQ(run(&Multidll::HM_upload2), TransferCode::kTimeOut) << "the cable is gone";
    expectNothingArrived();
}

TEST_F(KermitTransfer, RefusesCallsOutOfOrder) {
    EXPECT_EQ(dll.HM_file_exist(1, 'A', "x"), TransferCode::kIllegalCommand);
    EXPECT_EQ(upload("x"), TransferCode::kIllegalCommand);
    EXPECT_EQ(dll.HM_upload2(bytes, packets), TransferCode::kIllegalCommand);
    EXPECT_EQ(dll.HM_download2(bytes, packets), TransferCode::kIllegalCommand);
    EXPECT_EQ(dll.HM_OpenCommPort(1, 9600, 8, 7, 1), TransferCode::kIllegalCommand);
    for (const auto& [given, kept] : {std::pair{0, 1}, {7, 7}, {99, 60}}) {
        dll.HM_set_time_out(given);
        EXPECT_EQ(dll.HM_get_time_out(), kept);
    }
}

}  // namespace
}  // namespace kalvo
