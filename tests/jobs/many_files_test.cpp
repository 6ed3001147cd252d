// Many files by several workers: what comes of them is what one worker makes, in the same order.

#include <atomic>

#include "jobs/batch.h"
#include "jobs/each_file.h"
#include "jobs/list.h"
#include "shared/files.h"
#include "support/app_fixture.h"
#include "support/golden_run.h"
#include "support/sample_las.h"

namespace welvane::test {
namespace {

constexpr int fileCount = 60;

class ManyFiles : public AppTest {
  protected:
    ManyFiles() {
        for (int number = 100; number < 100 + fileCount; ++number) {
            const bool bad = number % 7 == 0;
            const bool linesEndInLf = number % 5 == 0;
            const std::string text = bad ? "no log" : sampleLas({"GR", "RHOB"}, number, 20 + number % 3);
            const std::string name = std::to_string(number) + ".las";
            files.push_back(linesEndInLf ? folder.write(name, text) : folder.writeLines(name, text));
        }
        files.push_back(folder.path("none.las"));
        files.push_back(files.front());
    }
    BatchRequest batch(const std::string& out, std::size_t workers) {
        BatchRequest request{.files = files, .folder = folder.path(out), .workers = workers};
        request.log = folder.path(out + ".log");
        request.pass.step = "0.5";
        request.pass.fill = NullFill::Linear;
        return request;
    }
    /// What is told of each file, with the folder's name taken out.
    std::string run(const BatchRequest& request, const std::function<bool()>& stopWanted = {}) {
        Workbench bench(app, {}, stopWanted);
        std::string told;
        for (const BatchItem& item : runBatch(bench, request, [](const BatchItem&) {}).items) {
            told += fileNameOf(item.path) + " " + std::to_string(static_cast<int>(item.verdict)) + " " +
                    std::to_string(item.samples) + " " + item.fault.reason.text + "\n";
            for (const Note& note : item.notes) told += "  " + fileNameOf(note.file) + " " + textOf(note) + "\n";
        }
        for (std::size_t at = told.find(request.folder); at != std::string::npos; at = told.find(request.folder))
            told.erase(at, request.folder.size());
        return told;
    }

    std::vector<std::string> files;
};

TEST_F(ManyFiles, aBatchIsTheSameByAnyNumberOfWorkers) {
    const std::string one = run(batch("one", 1));
    const FileTexts outputs = textsBelow(folder.path("one"));
    EXPECT_GT(outputs.size(), 40U);
    for (const std::size_t workers : {2U, 5U}) {
        const std::string out = std::to_string(workers);
        EXPECT_EQ(run(batch(out, workers)), one);
        EXPECT_TRUE(textsBelow(folder.path(out)) == outputs) << workers;
    }
}

TEST_F(ManyFiles, aBatchThatIsStoppedLeavesWholeOutputsAndGoesOnWhereItWas) {
    run(batch("whole", 3));
    const FileTexts whole = textsBelow(folder.path("whole"));
    BatchRequest request = batch("stopped", 3);
    std::size_t before = 0;
    // A person stops it again and again, each time a little later.
    for (int patience = 20; before < whole.size(); patience += 40) {
        ASSERT_LT(patience, 20000);
        std::atomic<int> looks{0};
        run(request, [&] { return ++looks > patience; });
        const FileTexts now = textsBelow(folder.path("stopped"));
        for (const auto& [name, text] : now) EXPECT_TRUE(whole.at(name) == text) << name;
        EXPECT_GE(now.size(), before);
        before = now.size();
        request.resume = true;
        app.run.cancelRequested = false;
    }
    EXPECT_TRUE(textsBelow(folder.path("stopped")) == whole);
}

TEST_F(ManyFiles, aListIsTheSameByAnyNumberOfWorkers) {
    const auto list = [&](int workers) {
        std::string told;
        ListWatcher watcher;
        watcher.listed = [&](const FileListing& file, const ListingOptions&) { told += file.path + "\n"; };
        watcher.refused = [&](const Fault& fault) { told += fault.file + ": " + fault.reason.text + "\n"; };
        ListRequest request{.files = files};
        request.workers = workers;
        Workbench bench(app, {});
        const ListReport report = listFiles(bench, request, watcher);
        for (const Note& note : report.notes) told += note.file + " " + textOf(note) + "\n";
        return told + TempFolder::readFile(report.listingPath) + TempFolder::readFile(report.summaryPath);
    };
    const std::string one = list(1);
    EXPECT_EQ(list(4), one);
    EXPECT_NE(one.find("none.las: "), std::string::npos);
}

TEST_F(ManyFiles, aStopEndsTheWorkAndWhatCameBeforeIsTaken) {
    std::atomic<bool> stop{false};
    Workbench bench(app, {}, [&] { return stop.load(); });
    // More than may be done ahead of the one in hand.
    for (int number = 0; number < 1000; ++number) files.push_back(std::to_string(number));
    std::vector<std::string> taken;
    const FileWork<int> work = [](Workbench&, const std::string&, std::size_t item) { return static_cast<int>(item); };
    const FileTaker<int> take = [&](const FileResult<int>& result) {
        EXPECT_EQ(*result.report, static_cast<int>(taken.size()));
        taken.push_back(result.file);
        if (taken.size() == 10) stop = true;
    };
    EXPECT_FALSE(eachFile<int>(bench, files, 3, work, take));
    ASSERT_GE(taken.size(), 10U);
    EXPECT_LT(taken.size(), files.size());
    EXPECT_TRUE(std::equal(taken.begin(), taken.end(), files.begin()));
}

}  // namespace
}  // namespace welvane::test
