// The package for apt, unpacked as dpkg does, and what goes with all packages.

#include <map>

#include <nlohmann/json.hpp>

#include "tests/harness/packages.hpp"

namespace rtrange_test {
namespace {

/// Words of a command's output.
std::vector<std::string> words_of(const std::string& command) {
    const result result = run(command + " | tr -s ' ' '\\n'");
    EXPECT_EQ(result.exit_code, 0) << command << "\n" << result.output;
    std::vector<std::string> words = split(result.output, '\n');
    std::erase(words, "");
    EXPECT_FALSE(words.empty()) << command;
    return words;
}

class debian_package : public package_test {
protected:
    static void SetUpTestSuite() {
        packages = pack("linux", "'TGZ;DEB'");
        file = packages / "rtrange_" VERSION "_amd64.deb";
        const result result =
            run("dpkg-deb -x " + quoted(file) + " " + quoted(scratch / "unpacked"));
        EXPECT_EQ(result.exit_code, 0) << result.output;
        root = scratch / "unpacked";
        program = quoted(root / "usr/bin/rtrange");
    }

    static std::vector<std::string> commands() {
        return words_of(program + " __complete '' | tail -n +2");
    }

    static inline fs::path packages, file, root;
    static inline std::string program;
};

TEST_F(debian_package, holds_what_its_users_need) {
    EXPECT_EQ(names_in(root / "usr/bin"), names{"rtrange"});
    EXPECT_EQ(names_in(root / "usr/lib/rtrange"),
              (names{"libzelc.so", "zel_rt_range_formatter.so"}));
    expect_files(root / "usr/share/doc/rtrange",
                 {"copyright", "changelog.gz", "CHANGELOG.md.gz", "docs/rtrange.md",
                  "include/zel/formatter.h", "include/zelcpp/crc32c.hpp",
                  "examples/minimal_host/CMakeLists.txt", "examples/minimal_host/services.h",
                  "examples/captures/following.pcap", "rtrange.spdx.json"});
    expect_files(root / "usr/share/bash-completion/completions", {"rtrange"});
    names pages{"rtrange.1.gz"};
    for (const std::string& command : commands())
        pages.insert("rtrange-" + command + ".1.gz");
    EXPECT_EQ(names_in(root / "usr/share/man/man1"), pages);
    const fs::path dissector = "wireshark/plugins/rt_range.lua";
    EXPECT_EQ(fs::exists(root / "usr/lib" / MACHINE / dissector),
              fs::exists(source / "share/wireshark/rt_range.lua"));
}

TEST_F(debian_package, decodes_like_the_build_with_its_own_plug_in) {
    expect_same_tables(program, example);
    EXPECT_TRUE(call(program, "info").output.starts_with((root / "usr/lib/rtrange").string()));
}

TEST_F(debian_package, has_man_pages_with_every_option) {
    for (const std::string& command : commands()) {
        const std::string page =
            quoted(root / "usr/share/man/man1" / ("rtrange-" + command)) + ".1.gz";
        EXPECT_EQ(
            run("LC_ALL=C.UTF-8 man --warnings -l -Tutf8 -Z " + page + " 2>&1 >/dev/null").output,
            "");
        const std::string text = run("LC_ALL=C.UTF-8 MANWIDTH=300 man -l " + page).output;
        expect_contains(text, {"rtrange " + command + " [OPTIONS]"});
        expect_contains(text, words_of(program + " " + command +
                                       " --help | grep -oE '^  (-[a-z], )?--[a-z-]+'"));
    }
}

TEST_F(debian_package, passes_lintian) {
    const result result = run("lintian --allow-root --fail-on error,warning " + quoted(file));
    EXPECT_EQ(result.exit_code, 0) << result.output;
}

TEST_F(debian_package, lists_the_libraries_that_it_depends_on) {
    const auto list =
        nlohmann::json::parse(content(root / "usr/share/doc/rtrange/rtrange.spdx.json"));
    EXPECT_EQ(list["spdxVersion"], "SPDX-2.3");
    std::map<std::string, std::string> versions, ids;
    for (const auto& library : list["packages"]) {
        versions[library["name"]] = library["versionInfo"];
        ids[library["SPDXID"]] = library["name"];
        EXPECT_NE(library["licenseDeclared"], "NOASSERTION") << library["name"];
    }
    EXPECT_EQ(ids.size(), list["packages"].size());
    EXPECT_EQ(list["relationships"].size(), list["packages"].size());
    for (const auto& relationship : list["relationships"])
        EXPECT_TRUE(ids.contains(relationship["relatedSpdxElement"])) << relationship;
    // Computed by dpkg-shlibdeps.
    for (const std::string& library :
         words_of("dpkg-deb -f " + quoted(file) + " Depends | sed 's/([^)]*)//g; s/,/ /g'"))
        EXPECT_EQ(versions[library], run("dpkg-query -W -f '${Version}' " + library).output)
            << library;
    EXPECT_TRUE(versions.contains("libcli11-dev"));
}

TEST_F(debian_package, comes_with_check_sums) {
    const result result = run("cd " + quoted(packages) + " && sha256sum -c SHA256SUMS");
    EXPECT_EQ(result.exit_code, 0) << result.output;
    expect_contains(result.output, {"rtrange_" VERSION "_amd64.deb: OK\n",
                                    "rtrange-" VERSION "-linux-x86_64.tar.gz: OK\n"});
}

TEST_F(debian_package, is_the_same_when_packed_again) {
    // Packing copies, strips and compresses; here at another time, with other rights of new files.
    const fs::path again = pack("linux", "'TGZ;DEB'", "packed again", "umask 077; TZ=Asia/Tokyo ");
    EXPECT_EQ(content(again / "SHA256SUMS"), content(packages / "SHA256SUMS"));
    // In another folder, it would differ.
    EXPECT_EQ(run("grep -rlF " + quoted(source) + " " + quoted(root)).output, "");
}

} // namespace
} // namespace rtrange_test
