#include "platform/output_file.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <signal.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/leftovers.h"
#include "support/temp_folder.h"

namespace welvane {
namespace {

namespace fs = std::filesystem;

std::size_t filesIn(const test::TempFolder& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()));
}

TEST(OutputFile, besideTakesItsNameAtCommitOnly) {
    const test::TempFolder folder;
    const std::string path = folder.write("c.las", "old");
    {
        OutputFile file(path, OutputFile::Mode::Beside);
        file.writeLine("new");
        file.close();
        EXPECT_EQ(folder.read("c.las"), "old");
        EXPECT_EQ(test::TempFolder::readFile(file.writtenPath()), "new\r\n");
    }
    EXPECT_EQ(folder.read("c.las"), "old") << "no commit, no change";
    EXPECT_EQ(filesIn(folder), 1u) << "nothing is left behind";
    OutputFile file(path, OutputFile::Mode::Beside);
    file.write("new");
    file.commit();
    EXPECT_EQ(folder.read("c.las"), "new");
    EXPECT_EQ(file.writtenPath(), path);
    EXPECT_EQ(filesIn(folder), 1u);
}

TEST(OutputFile, ofTwoWritersOfANewFileOneFails) {
    using Mode = OutputFile::Mode;
    struct Case {
        Mode second;
        bool named;  ///< the second has a name before its time
        std::string why, left;
    };
    for (const Case& one : {Case{Mode::New, false, "exists already: it came to be while this run was writing", "one"},
                            Case{Mode::New, true, "exists already: it came to be while this run was writing", "one"},
                            Case{Mode::Beside, false, "", "two"}, Case{Mode::Beside, true, "", "two"}}) {
        const test::TempFolder folder;
        const std::string path = folder.path("c.las");
        std::string why;
        {
            OutputFile first(path, Mode::New), second(path, one.second);
            first.write("one");
            second.write("two");
            if (one.named) {
                EXPECT_EQ(test::TempFolder::readFile(second.writtenPath()), "two");
            }
            first.commit();
            try {
                second.commit();
            } catch (const FileFailure& failure) {
                why = failure.reason();
            }
        }
        EXPECT_EQ(why, one.why);
        EXPECT_EQ(folder.read("c.las"), one.left);
        EXPECT_EQ(filesIn(folder), 1u);
        EXPECT_THROW(OutputFile(path, Mode::New), FileFailure) << "there from the start";
    }
}

TEST(OutputFile, aKilledWriterLeavesNothingOrWhatTheNextOneSweeps) {
    const test::TempFolder folder;
    const std::string path = folder.write("c.las", "old");
    for (const bool named : {false, true}) {
        const pid_t child = fork();
        if (child == 0) {
            OutputFile file(path, OutputFile::Mode::Beside);
            file.write("new");
            file.close();
            if (named) static_cast<void>(file.writtenPath());
            kill(getpid(), SIGKILL);
        }
        waitpid(child, nullptr, 0);
        EXPECT_EQ(folder.read("c.las"), "old");
        EXPECT_EQ(filesIn(folder), named ? 2u : 1u);
    }
    OutputFile alive(path, OutputFile::Mode::Beside);
    static_cast<void>(alive.writtenPath());
    const std::string other = folder.write(".c.las.elsewhere-1-1.part", ""), notOurs = folder.write(".c.part", "");
    sweepPartFiles(folder.path());
    EXPECT_EQ(filesIn(folder), 4u) << "the file, what lives, and what is not known to be dead";
    alive.commit();
    EXPECT_EQ(folder.read("c.las"), "");
}

TEST(Leftovers, scratchFoldersOfTheDeadAreSwept) {
    const test::TempFolder folder;
    const pid_t child = fork();
    if (child == 0) {
        fs::create_directory(makeScratchFolder(folder.path()) + "1");
        kill(getpid(), SIGKILL);
    }
    waitpid(child, nullptr, 0);
    const std::string own = makeScratchFolder(folder.path());
    fs::create_directory(folder.path("welvane-test-1"));
    ASSERT_EQ(filesIn(folder), 3u);
    sweepScratchFolders(folder.path());
    EXPECT_EQ(filesIn(folder), 2u);
    EXPECT_TRUE(fs::is_directory(own));
    errno = 0;
    EXPECT_EQ(makeScratchFolder(folder.path("none")), "");
    EXPECT_EQ(errno, ENOENT);
}

TEST(OutputFile, inPlaceReplacesAtOnceAndKeepsWhatWasGiven) {
    const test::TempFolder folder;
    const std::string path = folder.write("c.las", "old");
    {
        OutputFile file(path, OutputFile::Mode::InPlace);
        EXPECT_EQ(folder.read("c.las"), "");
        file.write("part");
    }
    EXPECT_EQ(folder.read("c.las"), "part");
}

TEST(OutputFile, largeWritesAndReservedRoomKeepTheirOrder) {
    const test::TempFolder folder;
    std::string expected;
    OutputFile file(folder.path("c"), OutputFile::Mode::Beside);
    for (int number = 0; number < 12; ++number) {
        const std::string piece(static_cast<std::size_t>(number) * 120000 + 1, static_cast<char>('a' + number % 26));
        if (number % 2 == 0) {
            file.write(piece);
        } else {
            piece.copy(file.reserve(piece.size() + 10), piece.size());
            file.advance(piece.size());
        }
        expected += piece;
    }
    file.commit();
    EXPECT_TRUE(folder.read("c") == expected);
}

TEST(OutputFile, aLinkStaysALinkAndModeBitsAreKept) {
    const test::TempFolder folder;
    fs::create_directory(folder.path("real"));
    folder.write("real/c.las", "old");
    ASSERT_EQ(chmod(folder.path("real/c.las").c_str(), 0640), 0);
    fs::create_symlink("real/c.las", folder.path("link"));
    fs::create_symlink("real/new.las", folder.path("dangling"));
    for (const char* name : {"link", "dangling"}) {
        OutputFile file(folder.path(name), OutputFile::Mode::Beside);
        file.write("new");
        file.commit();
        EXPECT_TRUE(fs::is_symlink(folder.path(name))) << name;
    }
    EXPECT_EQ(folder.read("real/c.las"), "new");
    EXPECT_EQ(folder.read("real/new.las"), "new");
    EXPECT_EQ(fs::status(folder.path("real/c.las")).permissions(), fs::perms{0640});
}

TEST(OutputFile, tellsWhyItCannotWrite) {
    const test::TempFolder folder;
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    struct Case {
        std::string path, reason;
    };
    for (const Case& row : {Case{folder.path("none/c.las"), "No such file or directory"},
                            Case{folder.path(), "Is a directory"}, Case{folder.path("pipe"), "Not a regular file"},
                            Case{"/dev/null", "Not a regular file"}, Case{"", "No such file or directory"}}) {
        for (const auto mode : {OutputFile::Mode::Beside, OutputFile::Mode::InPlace}) {
            try {
                OutputFile file(row.path, mode);
                ADD_FAILURE() << row.path;
            } catch (const FileFailure& failure) {
                EXPECT_EQ(failure.what(), row.path + ": " + row.reason);
            }
        }
    }
}

TEST(OutputFile, aDiskThatIsFullIsAFailureAndLeavesTheOldFile) {
    const test::TempFolder folder;
    const std::string path = folder.write("c.las", "old");
    // A limit on file sizes stands in for a full disk: the write gives up half way in the same manner.
    signal(SIGXFSZ, SIG_IGN);
    struct rlimit before {};
    getrlimit(RLIMIT_FSIZE, &before);
    struct rlimit small = before;
    small.rlim_cur = 100000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    bool failed = false;
    try {
        OutputFile file(path, OutputFile::Mode::Beside);
        for (int number = 0; number < 200; ++number) file.write(std::string(1000, 'x'));
        file.commit();
    } catch (const FileFailure&) {
        failed = true;
    }
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_TRUE(failed);
    EXPECT_EQ(folder.read("c.las"), "old");
    EXPECT_EQ(filesIn(folder), 1u);
}

}  // namespace
}  // namespace welvane
