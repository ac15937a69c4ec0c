// The program, as a user calls it.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

const fs::path example = EXAMPLE_CAPTURE;

struct result {
    int exit_code;
    std::string output; ///< standard output and standard error
};

/// Runs the program with these arguments, in the way a shell does.
result rtrange(const std::string& arguments) {
    const std::string command = std::string(RTRANGE) + " " + arguments + " 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    result result{-1, {}};
    char part[4096];
    while (const std::size_t size = std::fread(part, 1, sizeof(part), pipe))
        result.output.append(part, size);
    const int status = pclose(pipe);
    result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

std::string content(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::stringstream all;
    all << stream.rdbuf();
    return all.str();
}

void write(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::stringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

bool contains(const std::string& text, const std::string& part) {
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

TEST_F(rtrange_program, decodes_a_capture_the_same_from_either_wrapping_and_file_format) {
    const result first = rtrange("decode " + example.string() + " -o " + in_folder("a"));
    ASSERT_EQ(first.exit_code, 0) << first.output;
    const std::string table = content(folder / "a/hunter.csv");
    const auto rows = split(table, '\n');
    const auto header = split(rows.at(0), ',');
    EXPECT_EQ(header.at(0), "reference_timestamp");
    EXPECT_EQ(header.at(1), "source_ip");
    for (const std::string& row : rows)
        EXPECT_EQ(split(row, ',').size(), header.size());
    EXPECT_TRUE(contains(first.output, std::to_string(rows.size() - 1) + " rows")) << first.output;
    EXPECT_TRUE(contains(first.output, "hunter.csv"));
    EXPECT_EQ(table.back(), '\n');

    rtrange("decode " + example.string() + " --format zel.eth.rtrange -o " + in_folder("b"));
    EXPECT_EQ(content(folder / "b/hunter.csv"), table);
}

TEST_F(rtrange_program, keeps_what_came_before_a_truncated_end) {
    const std::string capture = content(example);
    write(folder / "cut.pcap", capture.substr(0, capture.size() / 2));
    const result result = rtrange("decode " + in_folder("cut.pcap") + " -o " + in_folder("out"));
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_TRUE(contains(result.output, "is broken after frame")) << result.output;
    EXPECT_TRUE(contains(result.output, "decoded"));
    EXPECT_GT(content(folder / "out/hunter.csv").size(), 1000U);
}

TEST_F(rtrange_program, removes_tables_of_an_earlier_run) {
    fs::create_directories(folder / "out");
    write(folder / "out/target4.csv", "old");
    write(folder / "out/notes.txt", "mine");
    EXPECT_EQ(rtrange("decode " + example.string() + " -o " + in_folder("out")).exit_code, 0);
    EXPECT_FALSE(fs::exists(folder / "out/target4.csv"));
    EXPECT_TRUE(fs::exists(folder / "out/notes.txt"));
}

TEST_F(rtrange_program, refuses_in_one_line_what_it_cannot_do) {
    write(folder / "empty.pcap", "");
    write(folder / "text.pcap", "this is no capture at all, just a text");
    write(folder / "none.pcap", content(example).substr(0, 24));
    std::string wlan = content(example);
    wlan[20] = 105; // link type of IEEE 802.11
    write(folder / "wlan.pcap", wlan);
    write(folder / "file", "");
    fs::create_directories(folder / "full");
    fs::create_symlink("/dev/full", folder / "full/hunter.csv");

    const struct {
        std::string arguments;
        int exit_code;
        std::string message;
    } cases[] = {
        {"decode " + in_folder("empty.pcap"), 1, "is empty"},
        {"decode " + in_folder("text.pcap"), 1, "unknown file format"},
        {"decode " + in_folder("none.pcap") + " -o " + in_folder("x"), 1, "no frames"},
        {"decode " + in_folder("wlan.pcap"), 1, "not Ethernet"},
        {"decode " + in_folder("missing.pcap"), 1, "No such file"},
        {"decode " + folder.string(), 1, "is a folder"},
        {"decode " + example.string() + " -o " + in_folder("file"), 1, "cannot create the folder"},
        {"decode " + example.string() + " -o " + in_folder("full"), 1, "No space left"},
        {"decode " + example.string() + " --plugin " + in_folder("file"), 1, "cannot load"},
        {"info /dev/null", 1, "cannot load"},
        {"simulate /no/such/folder/x.pcap", 1, "cannot write"},
        {"simulate /dev/full", 1, "No space left"},
        {"decode", 2, "CAPTURE"},
        {"decode " + example.string() + " --format zel.can", 2, "--format"},
        {"simulate x.pcap --targets 5", 2, "--targets"},
        {"nonsense", 2, "subcommand"},
        {"", 2, "subcommand"},
    };
    for (const auto& wrong : cases) {
        const result result = rtrange(wrong.arguments);
        EXPECT_EQ(result.exit_code, wrong.exit_code) << wrong.arguments << "\n" << result.output;
        EXPECT_TRUE(contains(result.output, wrong.message)) << result.output;
    }
}

TEST_F(rtrange_program, simulates_the_same_bytes_from_the_same_seed) {
    const std::string options = " --duration 1 --rate 50";
    ASSERT_EQ(rtrange("simulate " + in_folder("again.pcap") + options).exit_code, 0);
    EXPECT_EQ(content(folder / "again.pcap"), content(example));
    rtrange("simulate " + in_folder("other.pcap") + options + " --seed 2");
    EXPECT_NE(content(folder / "other.pcap"), content(example));
}

TEST_F(rtrange_program, shows_the_plug_in_and_the_records) {
    const result info = rtrange("info");
    EXPECT_EQ(info.exit_code, 0);
    for (const char* const expected : {"zel-library-type     formatter", "zel.rtrange\n",
                                       "zel.eth.rtrange\n", "zel_formatter_data_source_binding_t"})
        EXPECT_TRUE(contains(info.output, expected)) << expected;
    const result fields = rtrange("fields");
    EXPECT_EQ(fields.exit_code, 0);
    EXPECT_TRUE(contains(fields.output, "curvature"));
    EXPECT_EQ(rtrange("fields --markdown").output, content(RECORD_REFERENCE))
        << "write it again: rtrange fields --markdown > docs/records.md";
}

} // namespace
