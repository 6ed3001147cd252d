// The rules of the tree: which way includes run, between rooms and inside them, where the system's headers may stand,
// and that no source is forgotten.

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/temp_folder.h"

namespace welvane::test {
namespace {

namespace fs = std::filesystem;

/// Height of each room; a room includes itself and lower ones. Rooms of equal height stand side by side.
const std::map<std::string, int, std::less<>> heights = {
    {"shared", 0},  {"platform", 1}, {"las", 2},     {"reference", 3}, {"functions", 4}, {"session", 5}, {"engine", 6},
    {"certify", 7}, {"listing", 7},  {"convert", 7}, {"texttools", 7}, {"picture", 7},   {"conform", 7}, {"app", 8},
    {"jobs", 9},    {"models", 10},  {"cli", 11},    {"desktop", 11},  {"python", 11}};

bool isSystemHeader(std::string_view name) {
    static constexpr std::array<std::string_view, 19> names = {
        "unistd.h", "fcntl.h",   "signal.h",  "spawn.h",  "poll.h",   "pwd.h",     "grp.h",
        "dirent.h", "termios.h", "pthread.h", "dlfcn.h",  "glob.h",   "fnmatch.h", "netdb.h",
        "ftw.h",    "strings.h", "sched.h",   "syslog.h", "windows.h"};
    static constexpr std::array<std::string_view, 5> folders = {"sys/", "linux/", "netinet/", "arpa/", "asm/"};
    return std::find(names.begin(), names.end(), name) != names.end() ||
           std::any_of(folders.begin(), folders.end(),
                       [&](std::string_view folder) { return name.starts_with(folder); });
}

bool isVerbLibrary(std::string_view name) {
    return name.starts_with("CLI/") || name.starts_with("nlohmann/");
}
bool isWindowLibrary(std::string_view name) {
    return name.size() > 1 && name[0] == 'Q' && name[1] >= 'A' && name[1] <= 'Z';
}

bool isPythonLibrary(std::string_view name) {
    return name.starts_with("pybind11/") || name == "Python.h";
}

/// What opens files: a window leaves that to jobs and models.
bool opensFiles(std::string_view name) {
    static constexpr std::array<std::string_view, 8> names = {"fstream",   "filesystem", "QFile",       "QDir",
                                                              "QSaveFile", "QFileInfo",  "QTextStream", "QSettings"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// What is wrong with one include of the file `shown` in `room`, or nothing.
std::string faultOfInclude(const std::string& shown, const std::string& room, char quote, const std::string& name) {
    if (quote == '<') {
        if (isSystemHeader(name) && !shown.starts_with("src/platform/posix/"))
            return "<" + name + ">: only platform/posix talks to the operating system";
        if (isVerbLibrary(name) && room != "cli") return "<" + name + ">: only cli uses this library";
        if (isPythonLibrary(name) && room != "python") return "<" + name + ">: only python uses this library";
        if (isWindowLibrary(name) && room != "desktop") return "<" + name + ">: only desktop knows windows";
        if (room == "desktop" && opensFiles(name)) return "<" + name + ">: windows leave files to jobs and models";
        return {};
    }
    const std::string target = name.substr(0, name.find('/'));
    const auto to = heights.find(target);
    if (to == heights.end()) return "\"" + name + "\": an include names the room first";
    if (target != room && to->second >= heights.at(room))
        return "\"" + name + "\": " + room + " stands below or beside " + target;
    return {};
}

std::vector<std::string> linesOf(const fs::path& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

/// The parts of a room by name: a part is a header with the sources of its name, "grid" is grid.h and grid.cpp. Each
/// with the parts of its room that it includes.
using Parts = std::map<std::string, std::set<std::string>>;

/// A circle of parts that include each other, "a > b > a"; "" when there is none.
std::string circleIn(const Parts& parts) {
    std::set<std::string> done;
    std::vector<std::string> way;
    const std::function<std::string(const std::string&)> walk = [&](const std::string& part) -> std::string {
        const auto seen = std::find(way.begin(), way.end(), part);
        if (seen != way.end()) {
            std::string circle;
            for (auto place = seen; place != way.end(); ++place) circle += *place + " > ";
            return circle + part;
        }
        if (!done.insert(part).second) return {};
        way.push_back(part);
        if (const auto found = parts.find(part); found != parts.end())
            for (const std::string& next : found->second)
                if (std::string circle = walk(next); !circle.empty()) return circle;
        way.pop_back();
        return {};
    };
    for (const auto& [part, included] : parts)
        if (std::string circle = walk(part); !circle.empty()) return circle;
    return {};
}

void judgeSource(const fs::path& path, const std::string& shown, const std::string& room, Parts& parts,
                 std::vector<std::string>& faults) {
    const std::string part = path.stem().string();
    int number = 0;
    for (const std::string& line : linesOf(path)) {
        ++number;
        const std::string place = shown + ":" + std::to_string(number) + ": ";
        const std::size_t first = line.find_first_not_of(" \t");
        if (first == std::string::npos) continue;
        if (path.extension() == ".h" && line.compare(first, 15, "using namespace") == 0)
            faults.push_back(place + "a header opens a namespace for everyone who includes it");
        if (line[first] != '#') continue;
        const std::size_t directive = line.find_first_not_of(" \t", first + 1);
        if (directive == std::string::npos || line.compare(directive, 7, "include") != 0) continue;
        const std::size_t open = line.find_first_of("<\"", directive);
        const std::size_t close = open == std::string::npos ? open : line.find_first_of(">\"", open + 1);
        if (close == std::string::npos) continue;
        const std::string name = line.substr(open + 1, close - open - 1);
        const std::string fault = faultOfInclude(shown, room, line[open], name);
        if (!fault.empty()) faults.push_back(place + fault);
        if (const std::string other = fs::path(name).stem().string(); name.starts_with(room + "/") && other != part)
            parts[part].insert(other);
    }
}

/// The words of a CMakeLists.txt, comments left out.
std::vector<std::string> wordsOf(const fs::path& path) {
    std::vector<std::string> words;
    for (std::string line : linesOf(path)) {
        line.resize(std::min(line.size(), line.find('#')));
        std::replace_if(
            line.begin(), line.end(), [](char c) { return c == '(' || c == ')' || c == '"'; }, ' ');
        std::istringstream stream(line);
        words.insert(words.end(), std::istream_iterator<std::string>(stream), {});
    }
    return words;
}

void judgeRoom(const fs::path& root, const fs::path& folder, bool isSource, std::vector<std::string>& faults) {
    const std::vector<std::string> listed = wordsOf(folder / "CMakeLists.txt");
    Parts parts;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const fs::path& path = entry.path();
        const bool header = path.extension() == ".h";
        if (!entry.is_regular_file() || (!header && path.extension() != ".cpp")) continue;
        const std::string shown = fs::relative(path, root).generic_string();
        const std::string inRoom = fs::relative(path, folder).generic_string();
        if (isSource) judgeSource(path, shown, folder.filename().string(), parts, faults);
        if ((isSource || !header) && std::find(listed.begin(), listed.end(), inRoom) == listed.end())
            faults.push_back(shown + ": not listed in " + fs::relative(folder, root).generic_string() +
                             "/CMakeLists.txt");
    }
    if (const std::string circle = circleIn(parts); !circle.empty())
        faults.push_back(fs::relative(folder, root).generic_string() + ": " + circle +
                         ": these include each other, so none of them stands on its own");
}

/// Every breach of the rules below `root`/src and `root`/tests, one line each.
std::vector<std::string> findFaults(const fs::path& root) {
    std::vector<std::string> faults;
    for (const auto& entry : fs::directory_iterator(root / "src")) {
        if (!entry.is_directory()) continue;
        const std::string room = entry.path().filename().string();
        if (!heights.contains(room))
            faults.push_back("src/" + room + ": a room that this test does not know");
        else
            judgeRoom(root, entry.path(), true, faults);
        if (fs::is_directory(root / "tests" / room)) judgeRoom(root, root / "tests" / room, false, faults);
    }
    std::sort(faults.begin(), faults.end());
    return faults;
}

TEST(Layers, treeKeepsItsRules) {
    for (const std::string& fault : findFaults(WELVANE_SOURCE_DIR)) ADD_FAILURE() << fault;
}

// The rules are only worth something when a breach is seen.
TEST(Layers, everyBreachIsSeen) {
    struct Case {
        const char* name;
        const char* file;
        const char* text;
        const char* fault;  // "" when the file is fine
    };
    const Case cases[] = {
        {"arrow upwards", "src/las/a.h", "#include \"engine/grid.h\"\n",
         "src/las/a.h:1: \"engine/grid.h\": las stands below or beside engine"},
        {"arrow sideways", "src/listing/a.cpp", "\n  #  include \"convert/b.h\"\n",
         "src/listing/a.cpp:2: \"convert/b.h\": listing stands below or beside convert"},
        {"windows from verbs", "src/cli/a.cpp", "#include \"desktop/b.h\"\n",
         "src/cli/a.cpp:1: \"desktop/b.h\": cli stands below or beside desktop"},
        {"arrow downwards", "src/engine/a.cpp", "#include \"las/b.h\"\n#include <vector>\n", ""},
        {"own room", "src/engine/a.cpp", "#include \"engine/b.h\"\n", ""},
        {"room left out", "src/engine/a.cpp", "#include \"grid.h\"\n",
         "src/engine/a.cpp:1: \"grid.h\": an include names the room first"},
        {"system header", "src/app/a.cpp", "#include <sys/stat.h>\n",
         "src/app/a.cpp:1: <sys/stat.h>: only platform/posix talks to the operating system"},
        {"system header in an interface", "src/platform/a.h", "#include <unistd.h>\n",
         "src/platform/a.h:1: <unistd.h>: only platform/posix talks to the operating system"},
        {"system header in its place", "src/platform/posix/a.cpp", "#include <unistd.h>\n", ""},
        {"circle in a room", "src/las/a.cpp", "#include \"las/b.h\"\n",
         "src/las: a > b > a: these include each other, so none of them stands on its own"},
        {"library of the verbs", "src/app/a.cpp", "#include <nlohmann/json.hpp>\n",
         "src/app/a.cpp:1: <nlohmann/json.hpp>: only cli uses this library"},
        {"library of the package", "src/jobs/a.cpp", "#include <pybind11/numpy.h>\n",
         "src/jobs/a.cpp:1: <pybind11/numpy.h>: only python uses this library"},
        {"library in its place", "src/cli/a.cpp", "#include <CLI/CLI.hpp>\n", ""},
        {"window library", "src/app/a.cpp", "#include <QWidget>\n",
         "src/app/a.cpp:1: <QWidget>: only desktop knows windows"},
        {"window library in its place", "src/desktop/a.cpp", "#include <QWidget>\n", ""},
        {"files in a window", "src/desktop/a.cpp", "#include <QFile>\n",
         "src/desktop/a.cpp:1: <QFile>: windows leave files to jobs and models"},
        {"open namespace", "src/las/a.h", "using namespace std;\n",
         "src/las/a.h:1: a header opens a namespace for everyone who includes it"},
        {"unlisted source", "src/las/deep/b.cpp", "", "src/las/deep/b.cpp: not listed in src/las/CMakeLists.txt"},
        {"unlisted test", "tests/las/b_test.cpp", "", "tests/las/b_test.cpp: not listed in tests/las/CMakeLists.txt"},
        {"new room", "src/plots/a.cpp", "", "src/plots: a room that this test does not know"},
    };
    // Every room of these trees lists the same files; src/las has a header b.h that includes a.h.
    constexpr const char* listing = "add_library(room a.h a.cpp b.h posix/a.cpp) # deep/b.cpp b_test.cpp\n";
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const TempFolder folder;
        const std::string file = one.file;
        const std::string room = file.substr(0, file.find('/', file.find('/') + 1));
        for (const std::string& inside : {fs::path(file).parent_path().string(), std::string("src/las")})
            fs::create_directories(folder.path(inside));
        folder.write(room + "/CMakeLists.txt", listing);
        folder.write("src/las/CMakeLists.txt", listing);
        folder.write("src/las/b.h", "#include \"las/a.h\"\n");
        folder.write(file, one.text);
        const std::vector<std::string> faults = findFaults(folder.path());
        if (*one.fault == '\0')
            EXPECT_EQ(faults, std::vector<std::string>{});
        else
            EXPECT_EQ(faults, std::vector<std::string>{one.fault});
    }
}

}  // namespace
}  // namespace welvane::test
