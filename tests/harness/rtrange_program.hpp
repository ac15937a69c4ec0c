// The program rtrange, as a user calls it, and its tables, as a user reads them.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/harness/files.hpp"

namespace rtrange_test {

inline const fs::path example = EXAMPLE_CAPTURE;

struct result {
    int exit_code;
    std::string output; ///< standard output and standard error
};

/// Runs a shell's command line. Its output goes through a file: Wine leaves processes behind that
/// would keep a pipe open.
inline result run(const std::string& command) {
    const fs::path file =
        fs::temp_directory_path() / ("rtrange_output_" + std::to_string(getpid()));
    const int status = std::system(("{ " + command + "\n} >" + file.string() + " 2>&1").c_str());
    std::string output = content(file);
    std::erase(output, '\r');
    fs::remove(file);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

/// The command that starts the program: that of this build, or another one's.
inline std::string program() {
    const char* const other = std::getenv("RTRANGE");
    return other != nullptr ? other : RTRANGE;
}
inline bool is_windows_program() {
    return program().ends_with(".exe");
}

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

inline void expect_contains(const std::string& text, const std::vector<std::string>& parts) {
    for (const std::string& part : parts)
        EXPECT_TRUE(contains(text, part)) << "no '" << part << "' in:\n" << text;
}

/// Works in a folder of its own, which holds the example "following.pcap".
class rtrange_program : public testing::Test {
protected:
    void SetUp() override {
        for (const std::string& file : split(program(), ' '))
            if (is_windows_program() && !fs::exists(file))
                GTEST_SKIP() << "needs Wine and the preset 'windows' built";
        folder = fs::temp_directory_path() / ("rtrange_test_" + std::to_string(getpid()));
        fs::create_directories(folder);
        fs::copy_file(example, folder / "following.pcap");
    }
    void TearDown() override { fs::remove_all(folder); }

    /// Runs the program with these arguments, in the way a shell does.
    result rtrange(const std::string& arguments) const {
        return run("cd " + folder.string() + " && " + program() + " " + arguments);
    }
    /// The same, for what has to succeed. Gives the output.
    std::string succeed(const std::string& arguments) const {
        const result result = rtrange(arguments);
        EXPECT_EQ(result.exit_code, 0) << arguments << "\n" << result.output;
        return result.output;
    }

    fs::path folder;
};

/// A table by column name.
struct csv_table {
    explicit csv_table(const fs::path& file) {
        const auto lines = split(content(file), '\n');
        header = split(lines.at(0), ',');
        for (std::size_t i = 1; i < lines.size(); ++i) {
            rows.push_back(split(lines[i] + ',', ',')); // the last cell may be empty
            EXPECT_EQ(rows.back().size(), header.size());
        }
    }

    const std::string& cell(std::size_t row, const std::string& column) const {
        const auto found = std::find(header.begin(), header.end(), column);
        EXPECT_NE(found, header.end()) << column;
        return rows.at(row).at(static_cast<std::size_t>(found - header.begin()));
    }

    double number(std::size_t row, const std::string& column) const {
        return std::stod(cell(row, column));
    }

    std::size_t count(const std::string& column, const std::string& value) const {
        std::size_t result = 0;
        for (std::size_t row = 0; row < rows.size(); ++row)
            result += cell(row, column) == value;
        return result;
    }

    std::vector<std::string> header;
    std::vector<std::vector<std::string>> rows;
};

} // namespace rtrange_test
