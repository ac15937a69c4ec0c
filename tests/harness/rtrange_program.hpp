// The program rtrange, as a user calls it, and its tables, as a user reads them.
#pragma once

#include <algorithm>
#include <cstdio>
#include <filesystem>
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

/// Runs the program with these arguments in a shell, after the shell commands `setup`.
inline result rtrange(const std::string& arguments, const std::string& setup = "") {
    const std::string command = setup + " " RTRANGE " " + arguments + " 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    result result{-1, {}};
    char part[4096];
    while (const std::size_t size = std::fread(part, 1, sizeof(part), pipe))
        result.output.append(part, size);
    const int status = pclose(pipe);
    result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class rtrange_program : public testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() / ("rtrange_test_" + std::to_string(getpid()));
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    std::string in_folder(const std::string& name) const { return (folder / name).string(); }

    fs::path folder;
};

/// A table by column name.
struct csv_table {
    explicit csv_table(const fs::path& file) {
        const auto lines = split(content(file), '\n');
        header = split(lines.at(0), ',');
        for (std::size_t i = 1; i < lines.size(); ++i) {
            rows.push_back(split(lines[i], ','));
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
