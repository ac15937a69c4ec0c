// The packages, as a user installs them: unpacked anywhere and called from anywhere.

#include <algorithm>

#include "tests/harness/packages.hpp"
#include "tests/harness/pcap.hpp"

namespace rtrange_test {
namespace {

/// The DLLs that a Windows program or library asks for.
names imports(const fs::path& file) {
    names result;
    for (const std::string& line :
         split(run("x86_64-w64-mingw32-objdump -p " + quoted(file) + " | grep 'DLL Name'").output,
               '\n'))
        result.insert(line.substr(line.rfind(' ') + 1));
    return result;
}

/// A built plug-in, and programs and libraries without symbols.
void expect_binaries(const fs::path& package, const std::string& objdump, const fs::path& plugin,
                     const names& programs) {
    EXPECT_EQ(names_in(package / "plugin"), names{plugin.string()});
    EXPECT_EQ(names_in(package / "bin"), programs);
    const result file = run(quoted(source / "tests/built_file_test.sh") + " " + objdump + " " +
                            quoted(package / "plugin" / plugin));
    EXPECT_EQ(file.exit_code, 0) << file.output;
    std::vector<fs::path> binaries{"plugin" / plugin};
    for (const std::string& program : programs)
        binaries.push_back("bin" / fs::path(program));
    for (const fs::path& binary : binaries)
        expect_contains(run(objdump + " -t " + quoted(package / binary)).output, {"no symbols"});
}

/// Unpacks an archive below a folder whose name is neither ASCII nor one word.
fs::path unpacked_archive(const std::string& system, const fs::path& packages,
                          const std::string& ending) {
    const fs::path unpacked = scratch / "Prüf stand";
    fs::create_directories(unpacked);
    const std::string name = "rtrange-" VERSION "-" + system + "-x86_64";
    const result result =
        run("cd " + quoted(unpacked) + " && cmake -E tar xf " + quoted(packages / (name + ending)));
    EXPECT_EQ(result.exit_code, 0) << result.output;
    EXPECT_EQ(names_in(unpacked), names{name});
    expect_files(unpacked / name,
                 {"README.md", "LICENSE", "CHANGELOG.md", "docs/hosts.md", "docs/records.md",
                  "examples/minimal_host/services.h", "captures/following.pcap",
                  "share/wireshark/rt_range.lua", "examples/minimal_host/CMakeLists.txt",
                  "include/zel/formatter.h", "include/zelcpp/crc32c.hpp",
                  "include/host/loader/plugin.hpp", "cmake/zel-config.cmake",
                  "reference-host/libzelcpp.a", "licenses/CLI11.txt", "licenses/fmtlib.txt",
                  "licenses/nlohmann-json.txt", "licenses/uPlot.txt",
                  "licenses/rtrange.spdx.json"});
    return unpacked / name;
}

class linux_package : public package_test {
protected:
    static void SetUpTestSuite() {
        package = unpacked_archive("linux", pack("linux", "TGZ"), ".tar.gz");
        program = quoted(package / "bin/rtrange");
    }

    static inline fs::path package;
    static inline std::string program;
};

TEST_F(linux_package, holds_what_its_users_need) {
    expect_binaries(package, "objdump", "zel_rt_range_formatter.so", {"libzelc.so", "rtrange"});
}

TEST_F(linux_package, decodes_like_the_build) {
    expect_same_tables(program, example);
    EXPECT_TRUE(call(program, "info").output.starts_with((package / "plugin").string()));
}

/// The commands or lines of code in the page's block that starts so.
std::string quoted_block(const fs::path& page, const std::string& language,
                         const std::string& start) {
    const std::string fence = "```", text = content(page);
    const std::size_t block = text.find(fence + language + "\n" + start);
    if (block == text.npos)
        return "false # no block starts with " + start;
    const std::size_t first = text.find('\n', block) + 1;
    return text.substr(first, text.find(fence, first) - first);
}

TEST_F(linux_package, works_as_its_readme_says) {
    const std::string page = content(package / "README.md");
    const result result = run("cd " + quoted(package) + " && set -e\n" +
                              quoted_block(package / "README.md", "sh", "bin/rtrange report"));
    EXPECT_EQ(result.exit_code, 0) << result.output;
    expect_files(package, {"following.html", "following/hunter.csv"});
    for (std::size_t at = 0; (at = page.find("](", at)) != page.npos; at += 2)
        expect_files(package, {page.substr(at + 2, page.find_first_of(")#", at) - at - 2)});
    fs::remove(package / "following.html");
    fs::remove_all(package / "following");
}

TEST_F(linux_package, builds_the_example_as_documented) {
    for (const std::string start : {"gcc ", "cmake -B "}) {
        const std::string commands = quoted_block(package / "docs/hosts.md", "sh", start);
        const result result = run("cd " + quoted(package) + " && set -e\n" + commands);
        EXPECT_EQ(result.exit_code, 0) << result.output;
        expect_contains(result.output, {"formatter zel.rtrange\n", "00200000 range 40.6120\n"});
    }
}

TEST_F(linux_package, offers_its_libraries_to_cmake) {
    const fs::path project = scratch / "own host";
    fs::create_directories(project);
    write(project / "CMakeLists.txt", "cmake_minimum_required(VERSION 3.25)\n"
                                      "project(own_host LANGUAGES CXX)\n"
                                      "find_package(zel " VERSION " REQUIRED)\n"
                                      "add_executable(own_host main.cpp)\n"
                                      "target_link_libraries(own_host zel::loader zel::zelc)\n");
    write(project / "main.cpp",
          "#include <cstdio>\n"
          "#include \"host/loader/plugin.hpp\"\n"
          "#include \"host/loader/raw_frames.hpp\"\n"
          "void use(std::span<const std::uint8_t> data) {\n"
          "    std::printf(\"%zu bytes\\n\", data.size());\n"
          "}\n"
          "int main() {\n"
          "    const std::uint8_t ethernet_frame[61]{};\n"
          "    const std::uint64_t time_ns = 1;\n" +
              quoted_block(package / "docs/hosts.md", "cpp", "zel::host::plugin") + "}\n");
    const result result =
        run("cd " + quoted(project) + " && cmake -B build -DCMAKE_PREFIX_PATH=" + quoted(package) +
            " && cmake --build build && cd " + quoted(package / "plugin") + " && " +
            quoted(project / "build/own_host"));
    EXPECT_EQ(result.exit_code, 0) << result.output;
    expect_contains(result.output, {"\n61 bytes\n"});
    const fs::path zelc_check = package / "reference-host/zelc_check";
    EXPECT_EQ(call(quoted(zelc_check), quoted(package / "reference-host/libzelc.so")).exit_code, 0);
}

class windows_package : public package_test {
protected:
    static void SetUpTestSuite() {
        if (!can_run())
            return;
        package = unpacked_archive("windows", pack("windows", "ZIP"), ".zip");
        // Wine takes file names for what the locale says they are.
        program = "LC_ALL=C.UTF-8 " WINE " " + quoted(package / "bin/rtrange.exe");
    }

    void SetUp() override {
        if (!can_run())
            GTEST_SKIP() << "needs Wine and the preset 'windows' built";
    }

    static bool can_run() { return fs::exists(source / "build/windows/bin/rtrange.exe"); }

    static inline fs::path package;
    static inline std::string program;
};

TEST_F(windows_package, holds_what_its_users_need) {
    expect_binaries(package, "x86_64-w64-mingw32-objdump", "zel_rt_range_formatter.dll",
                    {"rtrange.exe", "zelc.dll"});
    expect_files(package, {"reference-host/libzelc.dll.a", "reference-host/zelc.dll",
                           "reference-host/zelc.def", "reference-host/zelc_check.exe",
                           "licenses/gcc.txt", "licenses/hdf5.txt", "licenses/libpcap.txt",
                           "licenses/mingw-w64.txt", "licenses/zlib.txt"});
}

TEST_F(windows_package, imports_nothing_but_zelc_and_what_windows_has) {
    EXPECT_EQ(imports(package / "bin/zelc.dll"), (names{"KERNEL32.dll", "msvcrt.dll"}));
    const names permitted{"ADVAPI32.dll", "KERNEL32.dll", "SHELL32.dll",
                          "WS2_32.dll",   "msvcrt.dll",   "zelc.dll"};
    EXPECT_TRUE(std::ranges::includes(permitted, imports(package / "bin/rtrange.exe")));
}

TEST_F(windows_package, decodes_like_the_linux_build) {
    write(scratch / "größer.pcapng", as_pcapng(content(example)));
    expect_same_tables(program, example);
    expect_same_tables(program, scratch / "größer.pcapng");
}

TEST_F(windows_package, writes_files_of_any_name) {
    const std::pair<std::string, const char*> cases[] = {
        {"simulate 'Läufe.pcap' --duration 1 --rate 50", "Läufe.pcap"},
        {"decode 'Läufe.pcap' --as hdf5 -o 'Läufe.h5'", "Läufe.h5"},
        {"report 'Läufe.pcap' -o 'Läufe.html'", "Läufe.html"}};
    for (const auto& [arguments, file] : cases) {
        EXPECT_EQ(call(program, arguments).exit_code, 0) << arguments;
        EXPECT_TRUE(fs::exists(scratch / "elsewhere" / file)) << file;
    }
}

TEST_F(windows_package, finds_its_plug_in_and_names_what_it_cannot_find) {
    const result info = call(program, "info");
    EXPECT_EQ(info.exit_code, 0) << info.output;
    expect_contains(info.output, {"plugin\\zel_rt_range_formatter.dll\n", "zel.eth.rtrange\n"});
    const struct {
        std::string arguments, message;
    } cases[] = {
        {"decode 'fehlt für.pcap'", "'fehlt für.pcap' as a pcap or pcapng capture"},
        {"info " + quoted(package / "bin/zelc.dll"), "is not a formatter plug-in"},
        {"decode " + quoted(example) + " --plugin missing.dll", "cannot load"},
    };
    for (const auto& [arguments, message] : cases) {
        const result result = call(program, arguments);
        EXPECT_EQ(result.exit_code, 1) << arguments << "\n" << result.output;
        EXPECT_TRUE(result.output.starts_with("rtrange: ")) << result.output;
        expect_contains(result.output, {message});
    }
}

} // namespace
} // namespace rtrange_test
