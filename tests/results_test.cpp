// Results of earlier runs, and files of the user's own: what the program replaces and what it
// leaves alone.

#include <functional>
#include <map>

#include "tests/harness/pcap.hpp"
#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {
namespace {

/// All files below a folder, with their contents; folders and links by what they are.
std::map<std::string, std::string> everything_in(const fs::path& folder) {
    std::map<std::string, std::string> all;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = fs::relative(entry.path(), folder).string();
        all[name] = entry.is_symlink()     ? "link to " + fs::read_symlink(entry.path()).string()
                    : entry.is_directory() ? "folder"
                                           : content(entry.path());
    }
    return all;
}

class results : public rtrange_program {
protected:
    /// Runs a command that must fail with the message and change nothing at all.
    void expect_refusal(const std::string& arguments, const std::string& message,
                        const std::string& preparation = "") {
        SCOPED_TRACE(arguments);
        const auto before = everything_in(folder);
        const result result =
            run("cd " + folder.string() + " && " + preparation + program() + " " + arguments);
        EXPECT_TRUE(result.exit_code == 1 || result.exit_code == 2)
            << result.exit_code << result.output;
        expect_contains(result.output, {message});
        EXPECT_TRUE(everything_in(folder) == before);
    }

    /// All kinds of results, and an earlier one of each.
    void write_all() const {
        for (const std::string arguments :
             {"decode following.pcap -o run", "decode following.pcap --as hdf5 -o run.h5",
              "decode following.pcap --as mat -o run.mat", "report following.pcap -o run.html",
              "simulate run.pcap --duration 1 --rate 50"})
            succeed(arguments);
    }
};

/// Replaces part of a file.
void change(const fs::path& file, std::size_t at, const std::string& bytes) {
    std::string text = content(file);
    write(file, text.replace(at, bytes.size(), bytes));
}

/// What the manifest of a folder lists: its lines up to the sizes.
std::string listed_in(const fs::path& folder) {
    std::string names;
    for (const std::string& line : split(content(folder / "rtrange-files.txt"), '\n'))
        names += line.ends_with(':') ? line + "\n" : split(line, ' ').at(0) + "\n";
    return names;
}

TEST_F(results, are_named_after_the_capture) {
    fs::copy_file(example, folder / "run.1.pcap");
    succeed("decode run.1.pcap");
    succeed("decode run.1.pcap --as hdf5");
    succeed("decode run.1.pcap --as mat");
    succeed("report run.1.pcap");
    EXPECT_EQ(names_in(folder), (std::set<std::string>{"following.pcap", "run.1", "run.1.h5",
                                                       "run.1.html", "run.1.mat", "run.1.pcap"}));
    EXPECT_EQ(listed_in(folder / "run.1"),
              "Files that rtrange has written and 'rtrange decode --overwrite' may replace or "
              "remove:\nhunter.csv\nrcom.csv\ntarget1.csv\ntarget2.csv\nunidentified.csv\n");
    if (is_windows_program())
        return; // which cannot read a capture from standard input
    succeed("decode - < following.pcap");
    EXPECT_TRUE(fs::exists(folder / "stdin/hunter.csv"));
    fs::copy_file(example, folder / "bare");
    expect_refusal("decode bare", "'bare' is one of the captures");
}

TEST_F(results, are_replaced_on_demand_only) {
    write_all();
    write(folder / "run/notes.txt", "mine");
    const std::string all_tables = listed_in(folder / "run");
    const std::string commands[] = {"decode following.pcap --units target1 -o run",
                                    "decode following.pcap --units target1 --as hdf5 -o run.h5",
                                    "decode following.pcap --units target1 --as mat -o run.mat",
                                    "report following.pcap --units target1 -o run.html",
                                    "simulate run.pcap --duration 2"};
    for (const std::string& command : commands)
        expect_refusal(command, "add --overwrite");
    auto before = everything_in(folder);
    for (const std::string& command : commands)
        succeed(command + " --overwrite");
    EXPECT_EQ(names_in(folder / "run"),
              (std::set<std::string>{"notes.txt", "rtrange-files.txt", "target1.csv"}));
    EXPECT_EQ(content(folder / "run/notes.txt"), "mine");
    auto after = everything_in(folder);
    for (const char* const replaced :
         {"run.h5", "run.mat", "run.html", "run.pcap", "run/rtrange-files.txt"})
        EXPECT_TRUE(!after[replaced].empty() && after[replaced] != before[replaced]) << replaced;
    succeed("decode following.pcap -o run --overwrite");
    EXPECT_EQ(listed_in(folder / "run"), all_tables);
}

TEST_F(results, never_take_the_place_of_files_that_rtrange_has_not_written) {
    write_all();
    // Like results, but not: a page, an HDF5 file and a capture of others, and a table that the
    // manifest does not list.
    std::string page = content(folder / "run.html");
    write(folder / "page.html", page.erase(page.find("<meta name=\"generator\""), 6));
    fs::copy_file(folder / "run.h5", folder / "data.h5");
    change(folder / "data.h5", content(folder / "data.h5").find("rtrange "), "another ");
    fs::copy_file(folder / "run.mat", folder / "other.mat");
    change(folder / "other.mat", content(folder / "other.mat").find("rtrange 0"), "another ");
    fs::copy_file(example, folder / "later.pcap");
    change(folder / "later.pcap", pcap_header_size + sizeof(std::uint32_t), raw(1U));
    fs::copy_file(example, folder / "other.pcap");
    change(folder / "other.pcap", pcap_header_size + sizeof(frame_head) + 26, raw(1U));
    write(folder / "recording.pcap", as_pcapng(content(example)));
    write(folder / "empty", "");
    run("cp -a " + (folder / "run").string() + " " + (folder / "more").string());
    fs::copy(folder / "run", folder / "edited");
    fs::last_write_time(folder / "edited/hunter.csv",
                        fs::last_write_time(folder / "run/hunter.csv"));
    write(folder / "edited/target1.csv", "mine");
    write(folder / "more/target4.csv", "mine");
    fs::create_directories(folder / "own");
    write(folder / "own/hunter.csv", "mine");
    fs::create_directories(folder / "list");
    write(folder / "list/rtrange-files.txt", "my notes\n");
    fs::create_directories(folder / "within/target3.csv");
    write(folder / "file", "mine");

    const std::string csv = "decode following.pcap --overwrite -o ";
    const std::string hdf5 = "decode following.pcap --as hdf5 --overwrite -o ";
    const std::string mat = "decode following.pcap --as mat --overwrite -o ";
    const std::string report = "report following.pcap --overwrite -o ";
    const std::string simulate = "simulate --overwrite ";
    const std::pair<std::string, std::string> cases[] = {
        {csv + "more", "target4.csv' exists"},
        {csv + "edited", "has been changed or copied since rtrange wrote it"},
        {csv + "own", "hunter.csv' exists"},
        {csv + "own/", "hunter.csv' exists"},
        {csv + "list", "rtrange-files.txt' was not written by rtrange"},
        {csv + "within", "target3.csv' exists"},
        {csv + "file", "cannot create the folder 'file'"},
        {csv + "file/tables", "cannot create the folder 'file'"},
        {csv + "following.pcap", "is one of the captures"},
        {hdf5 + "data.h5", "not an HDF5 file of rtrange"},
        {mat + "other.mat", "not a MAT file of rtrange"},
        {hdf5 + "run.html", "not an HDF5 file of rtrange"},
        {hdf5 + "empty", "not an HDF5 file of rtrange"},
        {hdf5 + "run", "is a folder"},
        {hdf5 + "following.pcap", "is one of the captures"},
        {report + "page.html", "not a report of rtrange"},
        {report + "run.h5", "not a report of rtrange"},
        {report + "later.pcap", "not a report of rtrange"},
        {report + "run/", "is a folder"},
        {report + "run/hunter.csv", "not a report of rtrange"},
        {simulate + "later.pcap", "not a simulated capture"},
        {simulate + "other.pcap", "not a simulated capture"},
        {simulate + "recording.pcap", "not a simulated capture"},
        {simulate + "run.html", "not a simulated capture"},
        {simulate + "empty", "not a simulated capture"},
        {simulate + "run", "is a folder"},
    };
    for (const auto& [arguments, message] : cases)
        expect_refusal(arguments, message);

    // Without tables in the way, a folder of the user's own takes them.
    write(folder / "own/hunter.csv.txt", "mine");
    fs::remove(folder / "own/hunter.csv");
    succeed("decode following.pcap -o own");
    EXPECT_EQ(content(folder / "own/hunter.csv.txt"), "mine");
}

TEST_F(results, do_not_follow_links_to_files) {
    if (is_windows_program())
        GTEST_SKIP() << "Windows has no links without a privilege";
    write_all();
    fs::create_symlink("run.html", folder / "link.html");
    fs::create_symlink("run.h5", folder / "link.h5");
    fs::create_symlink("run.pcap", folder / "link.pcap");
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_directories(folder / "elsewhere");
    fs::rename(folder / "run/hunter.csv", folder / "elsewhere/kept.csv");
    fs::create_symlink("../elsewhere/kept.csv", folder / "run/hunter.csv");
    fs::create_symlink("following.pcap", folder / "input.pcap");
    fs::create_hard_link(folder / "following.pcap", folder / "same.pcap");
    for (const std::string overwrite : {"", " --overwrite"}) {
        expect_refusal("report following.pcap -o link.html" + overwrite, "is a symbolic link");
        expect_refusal("decode following.pcap --as hdf5 -o link.h5" + overwrite,
                       "is a symbolic link");
        expect_refusal("simulate link.pcap" + overwrite, "is a symbolic link");
        expect_refusal("report following.pcap -o dangling" + overwrite, "is a symbolic link");
        expect_refusal("decode following.pcap -o dangling" + overwrite, "cannot create the folder");
        expect_refusal("decode following.pcap -o run" + overwrite, "'run/hunter.csv' exists");
        expect_refusal("report input.pcap -o following.pcap" + overwrite, "one of the captures");
        expect_refusal("report following.pcap -o same.pcap" + overwrite, "one of the captures");
    }
    // A link to a folder is the folder.
    fs::create_symlink("elsewhere", folder / "tables");
    succeed("decode following.pcap -o tables");
    EXPECT_TRUE(fs::is_symlink(folder / "tables"));
    EXPECT_TRUE(fs::exists(folder / "elsewhere/rcom.csv"));
}

TEST_F(results, trust_no_manifest_beyond_tables_in_the_folder) {
    write_all();
    write(folder / "run/notes.txt", "mine");
    write(folder / "outside.csv", "mine");
    write(folder / "run/rtrange-files.txt", content(folder / "run/rtrange-files.txt") +
                                                "notes.txt\n../outside.csv\n" +
                                                (folder / "outside.csv").string() + "\n\n..\n");
    succeed("decode following.pcap -o run --overwrite");
    EXPECT_EQ(content(folder / "run/notes.txt"), "mine");
    EXPECT_EQ(content(folder / "outside.csv"), "mine");
}

TEST_F(results, survive_a_run_that_has_no_rows) {
    write_all();
    write(folder / "none.pcap", content(example).substr(0, pcap_header_size));
    write(folder / "cut.pcap", content(example).substr(0, 60));
    const std::string capture = content(example);
    std::string foreign = capture.substr(0, pcap_header_size);
    for_each_frame(capture, [&](const frame_head& head, std::string frame) {
        frame[36] = 1; // the destination port
        foreign += raw(head) + frame;
    });
    write(folder / "next.pcap", delayed(content(example), 9));
    write(folder / "foreign.pcap", foreign);
    const std::pair<const char*, const char*> cases[] = {
        {"none.pcap", "no frames"},
        {"cut.pcap", "cut.pcap"},
        {"missing.pcap", "missing.pcap"},
        {"foreign.pcap", "no rows: there was no NCOM (UDP port 3000) and no RCOM"},
        {"following.pcap --from 100", "no rows match --from 100: the capture ends at 0.98 s"},
        {"following.pcap --from 0:20 --to 1:00:00",
         "no rows match --from 0:20 --to 1:00:00: the capture ends at 0.98 s"},
        {"following.pcap next.pcap --from 2026-01-05T10:00:11Z",
         "the captures end at 2026-01-05 10:00:09.980 UTC"},
        {"following.pcap --to 2026-01-05T11:00:00+01:00",
         "the capture starts at 2026-01-05 10:00:00.000 UTC"},
        {"following.pcap --units target3,target4",
         "no rows match --units target3,target4: the capture has rows of hunter, target1, target2, "
         "rcom, unidentified, and ends at 0.98 s"},
    };
    for (const std::string command :
         {"decode --overwrite -o run ", "decode --overwrite --as hdf5 -o run.h5 ",
          "report --overwrite -o run.html ", "decode -o new ", "decode --as hdf5 -o new.h5 ",
          "report -o new.html "})
        for (const auto& [arguments, message] : cases)
            expect_refusal(command + arguments, message);
}

TEST_F(results, survive_a_full_disk) {
    if (is_windows_program())
        GTEST_SKIP() << "Windows has no limit of this kind";
    write_all();
    const auto limit = [](int half_kilobytes) {
        return "trap '' XFSZ; ulimit -f " + std::to_string(half_kilobytes) + "; ";
    };
    // No file may be larger than 10 KiB, to which a report's page, for one, does not fit.
    for (const std::string arguments :
         {"decode following.pcap --overwrite -o run", "decode following.pcap -o new",
          "decode following.pcap --overwrite --as hdf5 -o run.h5",
          "decode following.pcap --as hdf5 -o new.h5", "decode following.pcap --as mat -o new.mat",
          "report following.pcap --overwrite -o run.html", "report following.pcap -o new.html",
          "simulate --overwrite run.pcap", "simulate new.pcap"})
        expect_refusal(arguments, "File too large", limit(20));
    // Long enough to be written while it is decoded.
    succeed("simulate long.pcap --duration 20");
    for (const std::string arguments :
         {"decode long.pcap --overwrite -o run", "decode long.pcap -o new",
          "decode long.pcap --overwrite --as hdf5 -o run.h5",
          "decode long.pcap --as mat -o new.mat"})
        expect_refusal(arguments, "File too large", limit(1000));
}

TEST_F(results, survive_a_change_behind_the_programs_back) {
    if (is_windows_program())
        GTEST_SKIP() << "Windows has no pipes with names in folders";
    write_all();
    const auto earlier = everything_in(folder / "run");
    ASSERT_EQ(run("mkfifo " + (folder / "pipe").string()).exit_code, 0);
    // The program has checked its output when it reads the second part of the capture.
    const auto meddle = [&](const std::string& arguments, const std::string& meanwhile) {
        const result result =
            run("cd " + folder.string() + "; { head -c 20000 following.pcap; sleep 0.5; " +
                meanwhile + "; tail -c +20001 following.pcap; } > pipe & cd " + folder.string() +
                "; " + program() + " " + arguments);
        EXPECT_EQ(result.exit_code, 1) << arguments << result.output;
        return result.output;
    };
    expect_contains(meddle("report pipe -o new.html", "echo mine > new.html"),
                    {"'new.html' exists", "the result is in 'new.html.partial-"});
    EXPECT_EQ(content(folder / "new.html"), "mine\n");
    expect_contains(meddle("report pipe -o run.html --overwrite", "echo mine > run.html"),
                    {"'run.html' exists", "the result is in 'run.html.partial-"});
    EXPECT_EQ(content(folder / "run.html"), "mine\n");
    expect_contains(meddle("decode pipe -o new", "mkdir new; echo mine > new/a"),
                    {"the new tables are in 'new.partial-"});
    EXPECT_EQ(everything_in(folder / "new"), (std::map<std::string, std::string>{{"a", "mine\n"}}));
    // What is in the way of one table keeps all the earlier ones in their places.
    expect_contains(meddle("decode pipe -o run --overwrite --units target1,target2,rcom",
                           "rm run/target2.csv; mkdir -p run/target2.csv/mine"),
                    {"the new tables are in 'run/rtrange.partial-"});
    for (const auto& [name, text] : earlier)
        EXPECT_TRUE(name == "target2.csv" || content(folder / "run" / name) == text) << name;
    EXPECT_TRUE(fs::exists(folder / "run/target2.csv/mine"));
}

TEST_F(results, leave_nothing_that_looks_whole_when_the_program_is_killed) {
    if (is_windows_program())
        GTEST_SKIP() << "Windows has no pipes with names in folders";
    ASSERT_EQ(run("mkfifo " + (folder / "pipe").string()).exit_code, 0);
    for (const std::string arguments :
         {"decode pipe -o out", "decode pipe --as hdf5 -o out.h5", "report pipe -o out.html"}) {
        for (const std::string signal : {"KILL", "INT"}) {
            const result result = run("cd " + folder.string() + "; set -m; " + program() + " " +
                                      arguments + " & { cat following.pcap; sleep 0.7; kill -" +
                                      signal + " $!; cat following.pcap; } > pipe; wait $!");
            const fs::path out = folder / arguments.substr(arguments.rfind(' ') + 1);
            // An interruption keeps the result so far.
            EXPECT_EQ(fs::exists(out), signal == "INT") << arguments << "\n" << result.output;
        }
    }
    // But it never takes the place of an earlier one.
    succeed("decode following.pcap -o out --overwrite");
    const std::string earlier = content(folder / "out/target1.csv");
    const result result = run("cd " + folder.string() + "; set -m; " + program() +
                              " decode pipe -o out --overwrite & { head -c 20000 following.pcap; "
                              "sleep 0.7; kill -INT $!; cat following.pcap; } > pipe; wait $!");
    EXPECT_EQ(result.exit_code, 1);
    expect_contains(result.output, {"interrupted; the earlier result 'out' is kept"});
    EXPECT_EQ(content(folder / "out/target1.csv"), earlier);
}

} // namespace
} // namespace rtrange_test
