// The packages that cpack makes of a build.
#pragma once

#include <set>
#include <string>

#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {

inline const fs::path source = SOURCE_FOLDER;
inline const fs::path scratch =
    fs::temp_directory_path() / ("package_test_" + std::to_string(getpid()));

inline std::string quoted(const fs::path& file) {
    std::string text = "'";
    return text.append(file.string()).append("'");
}

using names = std::set<std::string>;

inline void expect_files(const fs::path& package, const names& files) {
    for (const std::string& file : files)
        EXPECT_TRUE(fs::exists(package / file)) << file;
}

/// Packs builds, and calls what is in the packages.
class package_test : public testing::Test {
protected:
    /// Packs a build into a folder, which it gives. A setting of the shell can precede the call.
    static fs::path pack(const std::string& system, const std::string& generators,
                         const std::string& folder = "packages", const std::string& setting = "") {
        fs::create_directories(scratch / "elsewhere");
        const result packed = run("cd " + quoted(source / "build" / system) + " && " + setting +
                                  "cpack -G " + generators + " -B " + quoted(scratch / folder));
        EXPECT_EQ(packed.exit_code, 0) << packed.output;
        return scratch / folder;
    }

    static void TearDownTestSuite() { fs::remove_all(scratch); }

    static result call(const std::string& program, const std::string& arguments) {
        return run("cd " + quoted(scratch / "elsewhere") + " && " + program + " " + arguments);
    }

    /// Decodes the example with a package's program; what comes out is what the build that this
    /// test belongs to gives, byte for byte.
    static void expect_same_tables(const std::string& packaged, const fs::path& capture) {
        const fs::path tables = scratch / "Täbellen", expected = scratch / "expected";
        const result result = call(packaged, "decode " + quoted(capture) + " -o " + quoted(tables));
        ASSERT_EQ(result.exit_code, 0) << result.output;
        expect_contains(result.output, {"Täbellen"});
        run(RTRANGE " decode " + quoted(example) + " -o " + quoted(expected));
        ASSERT_EQ(names_in(tables), names_in(expected));
        for (const std::string& name : names_in(expected))
            EXPECT_TRUE(name == "rtrange-files.txt" || // with the times of the files
                        content(tables / name) == content(expected / name))
                << name;
        fs::remove_all(tables);
    }
};

} // namespace rtrange_test
