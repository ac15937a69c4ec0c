// The packages, as a user installs them: unpacked anywhere and called from anywhere.

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/harness/files.hpp"
#include "tests/harness/pcapng.hpp"
#include "tests/harness/same_tables.hpp"

namespace rtrange_test {
namespace {

const fs::path source = SOURCE_FOLDER;
const fs::path example = source / "captures/following.pcap";
const fs::path scratch = fs::temp_directory_path() / ("package_test_" + std::to_string(getpid()));

struct result {
    int exit_code;
    std::string output; ///< standard output and standard error
};

std::string quoted(const fs::path& file) {
    std::string text = "'";
    return text.append(file.string()).append("'");
}

/// Runs a shell's command line. Its output goes through a file: Wine leaves processes behind that
/// would keep a pipe open.
result run(const std::string& command) {
    const fs::path output = scratch / "output";
    const int status = std::system(("{ " + command + "; } >" + quoted(output) + " 2>&1").c_str());
    std::string text = content(output);
    std::erase(text, '\r');
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text};
}

/// The DLLs that a Windows program or library asks for.
std::set<std::string> imports(const fs::path& file) {
    std::set<std::string> names;
    for (const std::string& line :
         split(run("x86_64-w64-mingw32-objdump -p " + quoted(file) + " | grep 'DLL Name'").output,
               '\n'))
        names.insert(line.substr(line.rfind(' ') + 1));
    return names;
}

void expect_stripped(const fs::path& file, const std::string& objdump) {
    EXPECT_NE(run(objdump + " -t " + quoted(file)).output.find("no symbols"), std::string::npos)
        << file;
}

/// Packs a build and unpacks it again, below a folder whose name is neither ASCII nor one word.
class package_test : public testing::Test {
protected:
    static fs::path begin(const std::string& system, const std::string& ending) {
        const fs::path unpacked = scratch / "Prüf stand";
        fs::create_directories(unpacked);
        fs::create_directories(scratch / "elsewhere");
        const std::string name = "rtrange-" VERSION "-" + system + "-x86_64";
        const result packed =
            run("cd " + quoted(source / "build" / system) + " && cpack -B " + quoted(scratch));
        EXPECT_EQ(packed.exit_code, 0) << packed.output;
        const result result = run("cd " + quoted(unpacked) + " && cmake -E tar xf " +
                                  quoted(scratch / (name + ending)));
        EXPECT_EQ(result.exit_code, 0) << result.output;
        EXPECT_EQ(names_in(unpacked), std::set{name});
        return unpacked / name;
    }

    static void TearDownTestSuite() { fs::remove_all(scratch); }

    static result call(const std::string& program, const std::string& arguments) {
        return run("cd " + quoted(scratch / "elsewhere") + " && " + program + " " + arguments);
    }

    /// Of the build that this test belongs to.
    static void decode_natively(const fs::path& capture, const fs::path& output,
                                const std::string& kind = "csv") {
        const result result =
            run(RTRANGE " decode " + quoted(capture) + " --as " + kind + " -o " + quoted(output));
        ASSERT_EQ(result.exit_code, 0) << result.output;
    }

    static void expect_common_files(const fs::path& package) {
        for (const char* const file :
             {"README.md", "LICENSE", "CHANGELOG.md", "docs/hosts.md", "docs/records.md",
              "examples/minimal_host/services.h", "captures/following.pcap",
              "include/zel/formatter.h", "include/zelcpp/crc32c.hpp", "reference-host/libzelcpp.a",
              "licenses/CLI11.txt", "licenses/fmtlib.txt", "licenses/nlohmann-json.txt",
              "licenses/uPlot.txt"})
            EXPECT_TRUE(fs::exists(package / file)) << file;
    }
};

class linux_package : public package_test {
protected:
    static void SetUpTestSuite() {
        package = begin("linux", ".tar.gz");
        program = quoted(package / "bin/rtrange");
    }

    static inline fs::path package;
    static inline std::string program;
};

TEST_F(linux_package, holds_what_its_users_need) {
    expect_common_files(package);
    EXPECT_EQ(names_in(package / "plugin"), std::set<std::string>{"zel_rt_range_formatter.so"});
    EXPECT_EQ(names_in(package / "bin"), (std::set<std::string>{"libzelc.so", "rtrange"}));
    const result file = run(quoted(source / "tests/built_file_test.sh") + " objdump " +
                            quoted(package / "plugin/zel_rt_range_formatter.so"));
    EXPECT_EQ(file.exit_code, 0) << file.output;
    for (const char* const name :
         {"plugin/zel_rt_range_formatter.so", "bin/rtrange", "bin/libzelc.so"})
        expect_stripped(package / name, "objdump");
}

TEST_F(linux_package, decodes_like_the_build) {
    const result result =
        call(program, "decode " + quoted(example) + " -o " + quoted(scratch / "tables"));
    ASSERT_EQ(result.exit_code, 0) << result.output;
    EXPECT_EQ(call(program, "info").output.find((package / "plugin").string()), 0U);
    decode_natively(example, scratch / "native");
    expect_same_tables(scratch / "tables", scratch / "native");
}

class windows_package : public package_test {
protected:
    static void SetUpTestSuite() {
        if (!can_run())
            return;
        package = begin("windows", ".zip");
        // Wine takes file names for what the locale says they are.
        program =
            "LC_ALL=C.UTF-8 WINEDEBUG=-all WINEPREFIX=" + quoted(source / "build/windows/wine") +
            " " WINE " " + quoted(package / "bin/rtrange.exe");
    }

    void SetUp() override {
        if (!can_run())
            GTEST_SKIP() << "needs Wine and the preset 'windows' built";
    }

    static bool can_run() {
        return fs::exists(WINE) && fs::exists(source / "build/windows/bin/rtrange.exe");
    }

    static inline fs::path package;
    static inline std::string program;
};

TEST_F(windows_package, holds_what_its_users_need) {
    expect_common_files(package);
    EXPECT_EQ(names_in(package / "plugin"), std::set<std::string>{"zel_rt_range_formatter.dll"});
    EXPECT_EQ(names_in(package / "bin"), (std::set<std::string>{"rtrange.exe", "zelc.dll"}));
    for (const char* const file : {"reference-host/libzelc.dll.a", "reference-host/zelc.dll",
                                   "licenses/gcc.txt", "licenses/hdf5.txt", "licenses/libpcap.txt",
                                   "licenses/mingw-w64.txt", "licenses/zlib.txt"})
        EXPECT_TRUE(fs::exists(package / file)) << file;
    for (const char* const name :
         {"plugin/zel_rt_range_formatter.dll", "bin/rtrange.exe", "bin/zelc.dll"})
        expect_stripped(package / name, "x86_64-w64-mingw32-objdump");
}

TEST_F(windows_package, imports_nothing_but_zelc_and_what_windows_has) {
    const result file =
        run(quoted(source / "tests/built_file_test.sh") + " x86_64-w64-mingw32-objdump " +
            quoted(package / "plugin/zel_rt_range_formatter.dll"));
    EXPECT_EQ(file.exit_code, 0) << file.output;
    EXPECT_EQ(imports(package / "bin/zelc.dll"),
              (std::set<std::string>{"KERNEL32.dll", "msvcrt.dll"}));
    EXPECT_EQ(imports(package / "bin/rtrange.exe"),
              (std::set<std::string>{"ADVAPI32.dll", "KERNEL32.dll", "SHELL32.dll", "WS2_32.dll",
                                     "msvcrt.dll", "zelc.dll"}));
}

TEST_F(windows_package, decodes_like_the_linux_build) {
    decode_natively(example, scratch / "native");
    write(scratch / "größer.pcapng", as_pcapng(content(example)));
    for (const fs::path& capture : {example, scratch / "größer.pcapng"}) {
        const fs::path tables = scratch / "Täbellen" / capture.extension();
        const result result = call(program, "decode " + quoted(capture) + " -o " + quoted(tables));
        ASSERT_EQ(result.exit_code, 0) << result.output;
        EXPECT_NE(result.output.find("Täbellen"), std::string::npos) << result.output;
        expect_same_tables(tables, scratch / "native");
    }
}

TEST_F(windows_package, writes_hdf5_like_the_linux_build) {
    const result result = call(program, "decode " + quoted(example) + " --as hdf5 -o 'Läufe.h5'");
    ASSERT_EQ(result.exit_code, 0) << result.output;
    decode_natively(example, scratch / "native.h5", "hdf5");
    decode_natively(example, scratch / "native");
    expect_same_datasets(scratch / "elsewhere/Läufe.h5", scratch / "native.h5", scratch / "native");
}

/// The numbers of a report, without the program's version and what draws them.
std::string data_blocks(const fs::path& page) {
    const std::string text = content(page);
    const std::size_t begin = text.find("<script type=\"text/plain\"");
    return text.substr(begin, text.find("id=\"summary\"") - begin);
}

TEST_F(windows_package, draws_the_numbers_of_the_linux_build) {
    // 32 bits show nothing of the sines' last bits.
    const result result = call(program, "report " + quoted(example) + " -o 'Läufe.html'");
    ASSERT_EQ(result.exit_code, 0) << result.output;
    run(RTRANGE " report " + quoted(example) + " -o " + quoted(scratch / "native.html"));
    const std::string numbers = data_blocks(scratch / "elsewhere/Läufe.html");
    EXPECT_GT(numbers.size(), 10'000U);
    EXPECT_EQ(numbers, data_blocks(scratch / "native.html"));
}

TEST_F(windows_package, simulates_what_it_can_decode) {
    const result simulated = call(program, "simulate 'Läufe.pcap' --duration 2 --targets 1");
    ASSERT_EQ(simulated.exit_code, 0) << simulated.output;
    const result windows = call(program, "decode 'Läufe.pcap' -o simulated");
    EXPECT_EQ(windows.exit_code, 0) << windows.output;
    decode_natively(scratch / "elsewhere/Läufe.pcap", scratch / "simulated natively");
    expect_same_tables(scratch / "elsewhere/simulated", scratch / "simulated natively");
}

TEST_F(windows_package, finds_its_plug_in_and_knows_its_records) {
    const result info = call(program, "info");
    EXPECT_EQ(info.exit_code, 0) << info.output;
    EXPECT_NE(info.output.find("plugin\\zel_rt_range_formatter.dll\n"), std::string::npos)
        << info.output;
    EXPECT_NE(info.output.find("zel.eth.rtrange\n"), std::string::npos) << info.output;
    EXPECT_EQ(call(program, "fields --markdown").output, content(source / "docs/records.md"));
}

TEST_F(windows_package, tells_failures_by_exit_code) {
    const struct {
        std::string arguments;
        int exit_code;
        std::string message;
    } cases[] = {
        {"decode 'fehlt für.pcap'", 1, "'fehlt für.pcap' as a pcap or pcapng capture"},
        {"decode " + quoted(source / "README.md"), 1, "unknown file format"},
        {"info " + quoted(package / "bin/zelc.dll"), 1, "is not a formatter plug-in"},
        {"decode " + quoted(example) + " --plugin missing.dll", 1, "cannot load"},
        {"decode", 2, "CAPTURE"},
        {"", 2, "name a command"},
    };
    for (const auto& wrong : cases) {
        const result result = call(program, wrong.arguments);
        EXPECT_EQ(result.exit_code, wrong.exit_code) << wrong.arguments << "\n" << result.output;
        EXPECT_TRUE(result.output.starts_with("rtrange: ")) << result.output;
        EXPECT_NE(result.output.find(wrong.message), std::string::npos) << result.output;
    }
}

} // namespace
} // namespace rtrange_test
