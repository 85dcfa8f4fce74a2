#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Scripts and their expected sessions live beside each other: NAME.kls and NAME.golden.
const fs::path kGoldenDir = fs::path(__FILE__).parent_path().parent_path() / "golden";

struct Captured {
    int status = -1;
    std::string out;  // standard output and standard error, interleaved
};

Captured Run(const std::string& command) {
    Captured r;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) return r;
    std::array<char, 4096> buf{};
    size_t n = 0;
    while ((n = fread(buf.data(), 1, buf.size(), pipe)) > 0) r.out.append(buf.data(), n);
    const int raw = pclose(pipe);
    r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return r;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// What a script's first lines name after a tag, each line so tagged: "# options: --save
// arcs.kdw" (the options of kelaz run), "# setup: sample plant.kdw" (a kelaz command run before,
// in the same folder; several run in order), "# after: project show proj.kelaz" (a kelaz command
// run after, its output part of the session).
std::vector<std::string> ScriptHeaders(const fs::path& script, const std::string& tag) {
    std::ifstream in(script);
    std::string line;
    std::vector<std::string> found;
    while (std::getline(in, line) && line.rfind("# ", 0) == 0) {
        if (line.rfind(tag, 0) == 0) found.push_back(line.substr(tag.size()));
    }
    return found;
}

std::string ScriptHeader(const fs::path& script, const std::string& tag) {
    const std::vector<std::string> found = ScriptHeaders(script, tag);
    return found.empty() ? std::string() : found.front();
}

// What a person checks after running the script: the session, the exit status, the files it
// left, and the drawing it saved, listed.
std::string Session(const fs::path& script) {
    const fs::path work = fs::path(::testing::TempDir()) / ("golden-" + script.stem().string());
    fs::remove_all(work);
    fs::create_directories(work);
    fs::copy_file(script, work / script.filename());
    const std::string cd = "cd '" + work.string() + "' && ";
    for (const std::string& setup : ScriptHeaders(script, "# setup:")) {
        Run(cd + KELAZ_EXE + " " + setup);
    }
    const Captured run = Run(cd + KELAZ_EXE + " run " + script.filename().string() + " " +
                             ScriptHeader(script, "# options:"));
    std::string session = run.out + "--- exit " + std::to_string(run.status) + "\n";
    const std::string after = ScriptHeader(script, "# after:");
    if (!after.empty()) {
        const Captured later = Run(cd + KELAZ_EXE + " " + after);
        session +=
            "---" + after + "\n" + later.out + "--- exit " + std::to_string(later.status) + "\n";
    }
    session += "--- files\n";
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(work)) {
        if (entry.path().filename() != script.filename()) {
            files.push_back(entry.path().filename().string());
        }
    }
    std::sort(files.begin(), files.end());
    for (const std::string& file : files) {
        session += file + "\n";
        if (fs::path(file).extension() == ".kdw") {
            session += "--- dump " + file + "\n" + Run(cd + KELAZ_EXE + " dump " + file).out;
        }
    }
    return session;
}

std::vector<fs::path> Scripts() {
    std::vector<fs::path> scripts;
    for (const auto& entry : fs::directory_iterator(kGoldenDir)) {
        if (entry.path().extension() == ".kls") scripts.push_back(entry.path());
    }
    std::sort(scripts.begin(), scripts.end());
    return scripts;
}

// A session that differs from its golden file writes NAME.golden.actual beside it;
// scripts/accept-golden.sh takes the actual sessions as the new golden ones after review.
TEST(GoldenScripts, EverySessionMatchesItsGoldenFile) {
    const std::vector<fs::path> scripts = Scripts();
    ASSERT_GE(scripts.size(), 4u) << kGoldenDir;
    for (const fs::path& script : scripts) {
        fs::path golden = script;
        golden.replace_extension(".golden");
        fs::path actualPath = golden;
        actualPath += ".actual";
        const std::string actual = Session(script);
        if (fs::exists(golden) && ReadFile(golden) == actual) {
            fs::remove(actualPath);
            continue;
        }
        std::ofstream(actualPath, std::ios::binary) << actual;
        ADD_FAILURE() << script.filename() << " differs from its golden file; the session is in "
                      << actualPath << ":\n"
                      << actual;
    }
}

}  // namespace
