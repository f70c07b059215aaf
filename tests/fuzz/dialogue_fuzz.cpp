// Whatever a terminal sends: what it brings is dispatched or kept, and a polled scanner is
// told of exactly the records that are in the journal.
#include <algorithm>

#include "core/reception/batch_reception.h"
#include "core/reception/pull_dialogue.h"
#include "journal/batch_journal.h"
#include "tests/fuzz/fuzz_property.h"
#include "tests/support/fake_journal_file.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

struct Line {
    // Without a folder for temporary files: a batch does not depend on them.
    explicit Line(FuzzInput& from) : input(from) { state.scenario.applicationFolder = "/dev/null"; }

    FuzzInput& input;
    testing::FakePlatform world;
    RunTimeState state;
    testing::FakeJournalFile file;
    BatchJournal journal{&file, world.events, [](std::string_view) {}};
    int dispatched = 0;
    BatchReception batches{world.platform, state, journal, [this] { ++dispatched; }};
    std::string arrived;

    void arrive() {
        const std::string piece = input.text();
        arrived += piece;
        world.port.waiting += piece;
    }

    // What stands before the end mark. Without one it takes the end of the program to stop
    // waiting.
    void checkHt630() {
        world.events.whileSleeping = [this] { arrive(); };
        world.events.whilePumping = [this] {
            if (input.spent()) throw ProgramEnd{};
        };
        try {
            batches.collectHt630();
        } catch (const ProgramEnd&) {
            return require(dispatched == 0, "a batch is dispatched once it is whole");
        }
        std::string kept;
        for (const auto& batch : file.batches) {
            kept += batch.bytes;
            if (kept.size() == batch.bytes.size() && dispatched == 1) kept += kEndOfBatch;
        }
        require(kept == arrived, "the journal has everything that was taken");
        require(
            dispatched == 0 || state.ReceivedData == arrived.substr(0, arrived.find(kEndOfBatch)),
            "a batch is what stands before its end");
    }

    // Everything until the line falls silent.
    void checkPt630() {
        world.events.whileSleeping = [this] { arrive(); };
        batches.collectPt630();
        const std::string& batch = state.ReceivedData;
        const bool connects = batch.ends_with(kConnected);
        const bool isWork = !batch.empty() && batch != kEmptyBatch && !connects;
        require(arrived.starts_with(batch), "a batch is what arrived");
        require(dispatched == (isWork ? 1 : 0), "a batch with content is dispatched once");
        require(!isWork || file.bytes(state.batch) == batch, "the journal has the batch");
        const bool follows = connects && batch.find('\r') != std::string::npos;
        require(file.batches.size() == (isWork || follows ? 1U : 0U) &&
                    (!follows || file.bytes(1) == batch),
                "records that an announcement follows are in the journal, too");
        require(world.dialogs.shown.size() == (connects ? 1U : 0U), "a terminal is announced");
    }

    void checkPull(PullScanner scanner) {
        PullDialogue dialogue(world.platform, state, journal);
        world.port.open = true;
        world.events.whilePumping = [&] {
            if (input.spent()) dialogue.cancel();
            arrive();
        };
        world.port.whenSent = [this](std::string_view sent) {
            require(sent == "READ\r" || file.bytes(state.batch) == state.ReceivedData,
                    "a record is in the journal before it is acknowledged");
        };
        // What the first dialogue left of its last line belongs to the second.
        for (int i = 0; i < 2; ++i) {
            world.port.sent.clear();
            const bool ended = dialogue.run(scanner);
            require(ended || (world.port.waiting.empty() && input.spent()), "all is read");
            // Two columns, each ended by the CR that no column can hold.
            const auto lines = [](const std::string& text) {
                return std::count(text.begin(), text.end(), '\r');
            };
            require(2 * (lines(world.port.sent) - 1) == lines(state.ReceivedData),
                    "records kept are records acknowledged");
        }
    }
};

}  // namespace

void fuzz(FuzzInput& input) {
    const int terminal = input.ConsumeIntegralInRange(0, 3);
    Line line(input);
    if (terminal == 0) return line.checkHt630();
    if (terminal == 1) return line.checkPt630();
    line.checkPull(terminal == 2 ? PullScanner::kOptimus : PullScanner::kScanPal);
}

}  // namespace kalvo
