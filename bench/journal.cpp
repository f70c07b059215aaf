// The journal of batches beside the bare engine: what a batch, a record and a change of
// state cost, each next to a commit of as many bytes into one table, and what keeping
// bytes of the line costs next to one write. An error when a ratio is above 2.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/sqlite/journal_database.h"

namespace {

using namespace kalvo;

constexpr std::size_t kBatch = 2000;
constexpr std::size_t kRecord = 30;
constexpr double kMostRatio = 2.0;

// A folder on the disk that is measured, removed at the end.
class Folder {
public:
    Folder() {
        std::string name = (std::filesystem::current_path() / "journal-bench-XXXXXX").string();
        path = mkdtemp(name.data());
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { std::filesystem::remove_all(path); }
    std::string path;
};

// One table, one prepared INSERT, in the journal's mode.
class BareEngine {
public:
    BareEngine(const std::string& file, const char* synchronous) {
        sqlite3_open(file.c_str(), &database_);
        run("PRAGMA journal_mode=WAL");
        run(("PRAGMA synchronous=" + std::string(synchronous)).c_str());
        run("CREATE TABLE T (Id INTEGER PRIMARY KEY, Bytes BLOB)");
        sqlite3_prepare_v2(database_, "INSERT INTO T (Bytes) VALUES (?)", -1, &insert_, nullptr);
    }
    BareEngine(const BareEngine&) = delete;
    BareEngine& operator=(const BareEngine&) = delete;
    ~BareEngine() {
        sqlite3_finalize(insert_);
        sqlite3_close(database_);
    }
    void insert(const std::string& bytes) const {
        sqlite3_bind_blob(insert_, 1, bytes.data(), static_cast<int>(bytes.size()), SQLITE_STATIC);
        if (sqlite3_step(insert_) != SQLITE_DONE) std::abort();
        sqlite3_reset(insert_);
    }

private:
    void run(const char* sql) const { sqlite3_exec(database_, sql, nullptr, nullptr, nullptr); }
    sqlite3* database_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
};

// A journal with a batch in it.
struct Journal {
    Folder folder;
    SqliteJournal file{folder.path, SqliteJournal::Use::kReceive};
    std::int64_t batch = append(std::string(kBatch, 'x'));

    std::int64_t append(const std::string& bytes) {
        return file.append({"2024-03-05 14:07:09", {1, "HT630", "Stock"}, {}, 20, ""}, bytes, 0);
    }
};

template <typename Step>
double secondsFor(Step&& step) {
    const auto start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// In turns, since the disk is not always equally fast. The time shown is ours.
template <typename Ours, typename Bare>
void compare(benchmark::State& state, Ours&& ours, Bare&& bare) {
    for (int warmUp = 0; warmUp < 50; ++warmUp) {
        ours();
        bare();
    }
    double oursTotal = 0;
    double bareTotal = 0;
    for (auto _ : state) {
        const double seconds = secondsFor(ours);
        state.SetIterationTime(seconds);
        oursTotal += seconds;
        bareTotal += secondsFor(bare);
    }
    const double ratio = oursTotal / bareTotal;
    state.counters["bare_us"] = bareTotal * 1e6 / static_cast<double>(state.iterations());
    state.counters["ratio"] = ratio;
    if (ratio > kMostRatio) state.SkipWithError("more than twice the bare engine");
}

void append(benchmark::State& state) {
    Journal journal;
    const BareEngine engine(journal.folder.path + "/bare.db", "FULL");
    const std::string bytes(kBatch, 'x');
    compare(
        state, [&] { journal.append(bytes); }, [&] { engine.insert(bytes); });
}

void extend(benchmark::State& state) {
    Journal journal;
    const BareEngine engine(journal.folder.path + "/bare.db", "FULL");
    const std::string bytes(kRecord, 'x');
    compare(
        state, [&] { journal.file.extend(journal.batch, bytes, 1); },
        [&] { engine.insert(bytes); });
}

void update(benchmark::State& state) {
    Journal journal;
    const BareEngine engine(journal.folder.path + "/bare.db", "NORMAL");
    const std::string bytes(kRecord, 'x');
    std::int32_t pass = 0;
    compare(
        state, [&] { journal.file.update(journal.batch, BatchState::kTyping, 9, ++pass, ""); },
        [&] { engine.insert(bytes); });
}

void keepFlow(benchmark::State& state) {
    Journal journal;
    std::ofstream file(journal.folder.path + "/bare", std::ios::binary);
    const std::string bytes(kRecord, 'x');
    compare(
        state, [&] { journal.file.keepFlow(bytes); }, [&] { (file << bytes).flush(); });
}

BENCHMARK(append)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(extend)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(update)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(keepFlow)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
