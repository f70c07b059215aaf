// Loading an installed communication library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/shared/multidll_server.h"
#include "tests/support/temporary_folder.h"
#ifdef _WIN32
#include "platform/windows/multidll/installed_multidll.h"
#include "platform/windows/multidll/multidll_library.h"
#else
#include "platform/linux/multidll_library.h"
#endif
#include "text/runtime_error.h"

namespace kalvo {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// Of this test's own folder, where the build has put the samples.
fs::path sample(const char* name) {
    return fs::path(KALVO_SAMPLE_FOLDER) / (std::string(name) + KALVO_SAMPLE_SUFFIX);
}

// The error of loading one: its number and text.
std::string errorOf(const fs::path& library) {
    try {
        (void)loadMultidllLibrary(library.native());
    } catch (const RuntimeError& error) {
        return std::to_string(error.number()) + " " + error.description();
    }
    return {};
}

// A library here, or at the other end of messages.
void expectEveryArgumentInItsPlace(Multidll& library) {
    const auto number = [](TransferCode code) { return static_cast<std::int32_t>(code); };
    EXPECT_EQ(number(library.HM_OpenCommPort(1, 9600, 8, 2, 1)), 20421);
    EXPECT_EQ(number(library.HM_CloseCommPort(4)), 4);
    EXPECT_EQ(number(library.HM_file_exist(1, 'A', std::string_view("lot.txt").substr(0, 3))),
              1653);
    EXPECT_EQ(number(library.HM_power_saving_off(1, 'A')), 165);
    EXPECT_EQ(number(library.HM_power_saving_on(1, 'A')), 265);
    EXPECT_EQ(number(library.HM_upload1(1, 'A', "far", "/near")), 531065);
    std::array<char, Multidll::kReturnString> name{};
    EXPECT_EQ(library.HM_get_return_string_length(name), 9);
    EXPECT_STREQ(name.data(), "autre.txt");
    std::int32_t bytes = 5;
    std::int32_t packets = 1;
    EXPECT_EQ(library.HM_upload2(bytes, packets), TransferCode::kUnsuccessfulOrMore);
    EXPECT_EQ(library.HM_download2(bytes, packets), TransferCode::kUploadMode);
    EXPECT_EQ(bytes, 35);
    EXPECT_EQ(packets, 4);
    std::int32_t size = 0;
    EXPECT_EQ(number(library.HM_download1(1, 'A', "/near", "far", size)), 531065);
    EXPECT_EQ(size, 77);
    library.HM_set_ESC_delay(1);
    library.HM_set_NAK_delay(2);
    library.HM_set_time_out(3);
    EXPECT_EQ(library.HM_get_ESC_delay(), 1);
    EXPECT_EQ(library.HM_get_NAK_delay(), 2);
    EXPECT_EQ(library.HM_get_time_out(), 3);
    EXPECT_EQ(library.HM_version(), 123);
}

TEST(MultidllLibrary, PassesEveryArgumentToItsPlace) {
    expectEveryArgumentInItsPlace(*loadMultidllLibrary(sample("sample_multidll").native()));
}

// The server answers in this process, through messages that are all there is between them.
TEST(MultidllLibrary, PassesEveryArgumentThroughMessages) {
    const auto library = loadMultidllLibrary(sample("sample_multidll").native());
    struct Wire : MessageStream {
        explicit Wire(Multidll& served) : server(served) {}
        void send(std::string_view request) override {
            reply = server.answer(std::string(request));
        }
        std::string receive() override { return reply; }
        MultidllServer server;
        std::string reply = MessageWriter().add(std::int32_t{0}).add(std::string_view()).bytes();
    } wire(*library);
    ServedMultidll served(wire);
    expectEveryArgumentInItsPlace(served);
    wire.reply = MessageWriter().add(std::int32_t{453}).add(std::string_view("HM_")).bytes();
    EXPECT_THROW(ServedMultidll{wire}, RuntimeError);
    EXPECT_THROW(static_cast<void>(MessageReader("abc").number()), RuntimeError) << "cut short";
    EXPECT_THROW(static_cast<void>(MessageReader("\xFF\xFF\xFF\x7F").text()), RuntimeError);
}

#ifdef _WIN32
// By the server of 32 bits where this system runs it, and by one of our own bitness.
TEST(MultidllLibrary, IsServedByAProcessOfItsOwn) {
    const fs::path servers = KALVO_SAMPLE_FOLDER;
    expectEveryArgumentInItsPlace(
        *serveMultidllLibrary(servers / "multidll_server.exe", sample("sample_multidll")));
    try {
        static_cast<void>(
            serveMultidllLibrary(servers / "multidll_server.exe", sample("incomplete_multidll")));
        ADD_FAILURE() << "it lacks a function";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), error_number::kFunctionNotFound);
    }
    const fs::path sample32 = sample("sample_multidll32");
    const fs::path server32 = KALVO_SERVER32;
    if (!fs::exists(sample32) || !fs::exists(server32)) GTEST_SKIP() << "no compiler for 32 bits";
    const fs::path beside = fs::path(KALVO_INSTALLED_LIBRARY).parent_path() / server32.filename();
    EXPECT_THAT(errorOf(sample32), HasSubstr("64 bits"));
    fs::copy_file(server32, beside, fs::copy_options::overwrite_existing);
    try {
        expectEveryArgumentInItsPlace(*findMultidllLibrary(sample32.string()));
    } catch (const RuntimeError& error) {
        // The system says that it runs no programs of 32 bits.
        EXPECT_THAT(error.description(), HasSubstr("erreur ")) << error.description();
    }
    fs::remove(beside);
}
#endif

TEST(MultidllLibrary, SaysWhatIsWrongWithOneThatCannotBeUsed) {
    const testing::TemporaryFolder folder;
    const fs::path foreign = folder / "foreign.so";
    {
        std::ifstream good(sample("sample_multidll"), std::ios::binary);
        std::array<char, 4096> head{};
        good.read(head.data(), head.size());
        head[4] = 1;  // a file for 32 bits; for Windows one of no kind at all
        std::ofstream(foreign, std::ios::binary).write(head.data(), head.size());
    }
    const std::string notFound = std::to_string(error_number::kFileNotFound) + " ";
    EXPECT_THAT(errorOf(sample("incomplete_multidll")),
                AllOf(StartsWith(std::to_string(error_number::kFunctionNotFound) + " "),
                      HasSubstr("HM_version")));
    EXPECT_THAT(errorOf(foreign), AllOf(StartsWith(notFound), HasSubstr("64 bits")));
    EXPECT_THAT(errorOf(folder / "absent.so"), StartsWith(notFound));
}

TEST(MultidllLibrary, IsLookedForBesideTheProgram) {
    EXPECT_EQ(findMultidllLibrary(), nullptr);
    fs::copy_file(sample("sample_multidll"), KALVO_INSTALLED_LIBRARY,
                  fs::copy_options::overwrite_existing);
    auto found = findMultidllLibrary();
    const std::int32_t version = found != nullptr ? found->HM_version() : 0;
    found.reset();  // Windows lets go of the file then only
    fs::remove(KALVO_INSTALLED_LIBRARY);
    EXPECT_EQ(version, 123);
    EXPECT_EQ(findMultidllLibrary(sample("sample_multidll").string())->HM_version(), 123)
        << "named";
    EXPECT_THROW(static_cast<void>(findMultidllLibrary("absent")), RuntimeError);
}

}  // namespace
}  // namespace kalvo
