// The packages, as a user installs them: unpacked anywhere and called from anywhere.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "zel_rt_range_formatter/fields/ncom_fields.hpp"
#include "zel_rt_range_formatter/fields/rcom_fields.hpp"

namespace {

namespace fs = std::filesystem;
using zel::toolbox::rt_range::field;
using zel::toolbox::rt_range::field_type;

const fs::path source = SOURCE_FOLDER;
const fs::path example = source / "captures/following.pcap";

struct result {
    int exit_code;
    std::string output; ///< standard output and standard error
};

std::string quoted(const fs::path& file) {
    std::string text = "'";
    return text.append(file.string()).append("'");
}

result run(const std::string& command) {
    FILE* const pipe = popen(("{ " + command + "; } 2>&1").c_str(), "r");
    result result{-1, {}};
    char part[4096];
    while (const std::size_t size = std::fread(part, 1, sizeof(part), pipe))
        result.output.append(part, size);
    const int status = pclose(pipe);
    result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::erase(result.output, '\r');
    return result;
}

std::string content(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::stringstream all;
    all << stream.rdbuf();
    return all.str();
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::stringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

std::set<std::string> names_in(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
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

/// The frames of a little-endian pcap file with nanoseconds, as a pcapng file.
std::string as_pcapng(const std::string& pcap) {
    const auto number = [](std::uint32_t value, std::size_t size = 4) {
        return std::string(reinterpret_cast<const char*>(&value), size);
    };
    const auto block = [&](std::uint32_t type, const std::string& body) {
        const std::string size = number(static_cast<std::uint32_t>(body.size() + 12));
        return number(type) + size + body + size;
    };
    const std::string any_length(8, '\xFF');
    const std::string nanoseconds = number(9, 2) + number(1, 2) + number(9) + number(0);
    std::string pcapng = block(0x0A0D0D0A, number(0x1A2B3C4D) + number(1) + any_length) +
                         block(1, number(1) + number(65535) + nanoseconds);
    for (std::size_t at = 24; at < pcap.size();) {
        std::uint32_t head[4]; // seconds, nanoseconds, bytes kept, bytes
        std::memcpy(head, pcap.data() + at, sizeof(head));
        const std::uint64_t time = std::uint64_t{head[0]} * 1'000'000'000 + head[1];
        std::string frame = pcap.substr(at + sizeof(head), head[2]);
        frame.resize((frame.size() + 3) / 4 * 4);
        pcapng += block(6, number(0) + number(static_cast<std::uint32_t>(time >> 32)) +
                               number(static_cast<std::uint32_t>(time)) + number(head[2]) +
                               number(head[3]) + frame);
        at += sizeof(head) + head[2];
    }
    return pcapng;
}

/// Two builds of a decoder may differ in the last bit of a sine or cosine. A product of it with a
/// distance or speed then differs by 2e-16 of that, and a sum of a few such products, of which none
/// exceeds some kilometres or metres per second, by less than this.
bool same_number(double a, double b) {
    constexpr double relative = 4e-15;
    constexpr double absolute = 4e-12;
    return (std::isnan(a) && std::isnan(b)) || a == b ||
           std::abs(a - b) <= absolute + relative * std::max(std::abs(a), std::abs(b));
}

void expect_same_tables(const fs::path& folder, const fs::path& expected_folder) {
    ASSERT_EQ(names_in(folder), names_in(expected_folder));
    ASSERT_FALSE(names_in(folder).empty());
    for (const std::string& name : names_in(folder)) {
        std::set<std::string> numbers;
        for (const field& field : name == "rcom.csv" ? zel::toolbox::rt_range::rcom_fields()
                                                     : zel::toolbox::rt_range::ncom_fields())
            if (field.type == field_type::f64)
                numbers.insert(field.name);
        const auto rows = split(content(folder / name), '\n');
        const auto expected_rows = split(content(expected_folder / name), '\n');
        ASSERT_EQ(rows.size(), expected_rows.size()) << name;
        ASSERT_EQ(rows[0], expected_rows[0]) << name;
        const auto columns = split(rows[0], ',');
        for (std::size_t row = 1; row < rows.size(); ++row) {
            const auto cells = split(rows[row], ',');
            const auto expected_cells = split(expected_rows[row], ',');
            ASSERT_EQ(cells.size(), columns.size());
            ASSERT_EQ(expected_cells.size(), columns.size());
            for (std::size_t i = 0; i < cells.size(); ++i)
                EXPECT_TRUE(numbers.contains(columns[i])
                                ? same_number(std::stod(cells[i]), std::stod(expected_cells[i]))
                                : cells[i] == expected_cells[i])
                    << name << " row " << row << ", " << columns[i] << ": " << cells[i]
                    << " instead of " << expected_cells[i];
        }
    }
}

/// Packs a build and unpacks it again, below a folder whose name is neither ASCII nor one word.
class package_test : public testing::Test {
protected:
    static fs::path begin(const std::string& system, const std::string& ending) {
        scratch = fs::temp_directory_path() / ("package_test_" + std::to_string(getpid()));
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
    static void decode_natively(const fs::path& capture, const fs::path& output) {
        const result result = run(RTRANGE " decode " + quoted(capture) + " -o " + quoted(output));
        ASSERT_EQ(result.exit_code, 0) << result.output;
    }

    static void expect_common_files(const fs::path& package) {
        for (const char* const file :
             {"README.md", "LICENSE", "CHANGELOG.md", "docs/records.md", "captures/following.pcap",
              "include/zel/formatter.h", "include/zel/utility/crc32c.hpp", "lib/libzelcpp.a",
              "licenses/CLI11.txt", "licenses/fmtlib.txt"})
            EXPECT_TRUE(fs::exists(package / file)) << file;
    }

    static inline fs::path scratch;
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
    for (const char* const file :
         {"lib/libzelc.dll.a", "licenses/gcc.txt", "licenses/hdf5.txt", "licenses/libpcap.txt",
          "licenses/mingw-w64.txt", "licenses/zlib.txt"})
        EXPECT_TRUE(fs::exists(package / file)) << file;
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
    std::ofstream(scratch / "größer.pcapng", std::ios::binary) << as_pcapng(content(example));
    for (const fs::path& capture : {example, scratch / "größer.pcapng"}) {
        const fs::path tables = scratch / "Täbellen" / capture.extension();
        const result result = call(program, "decode " + quoted(capture) + " -o " + quoted(tables));
        ASSERT_EQ(result.exit_code, 0) << result.output;
        EXPECT_NE(result.output.find("Täbellen"), std::string::npos) << result.output;
        expect_same_tables(tables, scratch / "native");
    }
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
        {"", 2, "subcommand"},
    };
    for (const auto& wrong : cases) {
        const result result = call(program, wrong.arguments);
        EXPECT_EQ(result.exit_code, wrong.exit_code) << wrong.arguments << "\n" << result.output;
        EXPECT_TRUE(result.output.starts_with("rtrange: ")) << result.output;
        EXPECT_NE(result.output.find(wrong.message), std::string::npos) << result.output;
    }
}

} // namespace
