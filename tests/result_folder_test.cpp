// What a folder of tables holds if the program is killed while it replaces it, or if others change
// the folder meanwhile. The program's calls that rename or remove folders and files, or create
// folders, come here first.

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "tests/harness/files.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/results/result_folder.hpp"

namespace {

/// Called before each change of a name. An error number that it returns is the call's.
std::function<int(const std::string& call)> before_change;

bool permitted(const std::string& call) {
    const int error = before_change ? before_change(call) : 0;
    errno = error;
    return error == 0;
}

long change(const std::string& name, const std::function<long()>& call) {
    return permitted(name) ? call() : -1;
}

} // namespace

// Exported, so that the standard library calls them, too.
#pragma GCC visibility push(default)
extern "C" {
int remove(const char* path) noexcept {
    return static_cast<int>(change("remove", [=] {
        const long result = syscall(SYS_unlinkat, AT_FDCWD, path, 0);
        return result == 0 || errno != EISDIR ? result
                                              : syscall(SYS_unlinkat, AT_FDCWD, path, AT_REMOVEDIR);
    }));
}
int renameat2(int from_folder, const char* from, int to_folder, const char* to,
              unsigned flags) noexcept {
    return static_cast<int>(change(flags == RENAME_EXCHANGE ? "exchange" : "rename", [=] {
        return syscall(SYS_renameat2, from_folder, from, to_folder, to, flags);
    }));
}
int rename(const char* from, const char* to) noexcept {
    return static_cast<int>(
        change("rename", [=] { return syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0); }));
}
int mkdir(const char* folder, mode_t mode) noexcept {
    return static_cast<int>(
        change("mkdir", [=] { return syscall(SYS_mkdirat, AT_FDCWD, folder, mode); }));
}
int unlinkat(int folder, const char* name, int flags) noexcept {
    return static_cast<int>(
        change("remove", [=] { return syscall(SYS_unlinkat, folder, name, flags); }));
}
}
#pragma GCC visibility pop

namespace rtrange_test {
namespace {

using rtrange::result_folder;
using contents = std::map<std::string, std::string>;

const contents earlier_tables{{"hunter.csv", "earlier hunter"}, {"target1.csv", "earlier target"}};
const contents new_tables{{"hunter.csv", "new hunter"}, {"rcom.csv", "new rcom"}};

class result_folders : public testing::Test {
protected:
    void SetUp() override {
        root = fs::temp_directory_path() / ("result_folder_test_" + std::to_string(getpid()));
        reset();
    }
    void TearDown() override {
        before_change = nullptr;
        fs::remove_all(root);
    }

    /// The folder "run" with tables of an earlier run, and nothing else.
    void reset() {
        before_change = nullptr;
        fs::remove_all(root);
        fs::create_directories(root);
        decode(run(), earlier_tables);
    }

    fs::path run() const { return root / "run"; }

    static void decode(const fs::path& target, const contents& tables) {
        result_folder result(target, {"hunter.csv", "target1.csv", "rcom.csv"},
                             {.overwrite = true});
        for (const auto& [name, text] : tables)
            write(result.path_of(name), text);
        result.complete();
    }

    /// Decodes in a process that is killed before its n-th change. Returns whether it was.
    bool decode_until(int n, bool can_exchange = true) {
        last_child = fork();
        if (last_child == 0) {
            before_change = [&](const std::string& call) {
                if (--n == 0)
                    raise(SIGKILL);
                return can_exchange || call != "exchange" ? 0 : EINVAL;
            };
            decode(run() / ".", new_tables); // another name of the same folder
            std::_Exit(0);
        }
        int status = 0;
        waitpid(last_child, &status, 0);
        const bool was_killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        EXPECT_TRUE(was_killed || status == 0) << status;
        return was_killed;
    }

    contents tables() const {
        contents all;
        for (const auto& entry : fs::directory_iterator(run()))
            if (entry.path().extension() == ".csv")
                all[entry.path().filename().string()] = content(entry.path());
        return all;
    }

    std::set<std::string> names_of(const contents& tables) const {
        std::set<std::string> names{"rtrange-files.txt"};
        for (const auto& [name, text] : tables)
            names.insert(name);
        return names;
    }

    void expect_whole(const contents& expected) const {
        EXPECT_EQ(tables(), expected);
        std::set<std::string> listed{"rtrange-files.txt"};
        for (const auto& file : rtrange::read_manifest(run())) {
            EXPECT_EQ(file, rtrange::listed(run() / file.name));
            listed.insert(file.name);
        }
        EXPECT_EQ(listed, names_of(expected));
    }

    /// Decodes, and expects that the tables alone are replaced.
    void expect_not_exchanged(const std::string& target) {
        const auto inode = [&] {
            struct stat status {};
            EXPECT_EQ(stat(run().c_str(), &status), 0);
            return status.st_ino;
        };
        const auto before = inode();
        decode(root / target, new_tables);
        fs::current_path(start);
        EXPECT_EQ(inode(), before);
        expect_whole(new_tables);
    }

    const fs::path start = fs::current_path();
    fs::path root;
    pid_t last_child = 0;
};

TEST_F(result_folders, are_whole_at_any_moment_of_a_kill) {
    int kills = 0, kept = 0;
    for (; decode_until(kills + 1); reset()) {
        SCOPED_TRACE(++kills);
        const bool is_earlier = tables() == earlier_tables;
        kept += is_earlier;
        expect_whole(is_earlier ? earlier_tables : new_tables);
        decode(run(), new_tables); // what was left behind hinders no later run
        expect_whole(new_tables);
    }
    expect_whole(new_tables);
    EXPECT_EQ(names_in(root), std::set<std::string>{"run"});
    EXPECT_EQ(names_in(run()), names_of(new_tables));
    EXPECT_TRUE(kept >= 2 && kills - kept >= 3) << kept << " of " << kills;
}

TEST_F(result_folders, never_mix_two_runs_where_folders_cannot_be_exchanged) {
    struct {
        const char* description;
        bool has_notes;
        bool can_exchange;
    } const cases[] = {{"with notes of the user", true, true},
                       {"where the system has no exchange", false, false}};
    for (const auto& each : cases) {
        const auto prepare = [&] {
            reset();
            if (each.has_notes)
                write(run() / "notes.txt", "mine");
        };
        prepare();
        bool lacked_tables = false;
        for (int n = 1; decode_until(n, each.can_exchange); ++n, prepare()) {
            SCOPED_TRACE(std::to_string(n) + " " + each.description);
            const contents found = tables();
            for (const auto& [name, text] : found)
                EXPECT_EQ(split(text, ' ')[0], split(found.begin()->second, ' ')[0]) << name;
            if (found != earlier_tables && found != new_tables) {
                lacked_tables = true;
                // The temporary folder shows that tables are missing.
                EXPECT_TRUE(
                    names_in(run()).contains("rtrange.partial-" + std::to_string(last_child)));
            }
            EXPECT_EQ(content(run() / "notes.txt"), each.has_notes ? "mine" : "");
            decode(run(), new_tables);
            expect_whole(new_tables);
        }
        EXPECT_TRUE(lacked_tables) << "no kill left tables missing, as the manual says one can";
    }
}

TEST_F(result_folders, are_not_exchanged_where_the_difference_would_be_seen) {
    struct {
        const char* description;
        std::function<void()> prepare;
        std::string target = "run";
    } const cases[] = {
        {"permissions", [&] { chmod(run().c_str(), 02750); }},
        {"a symbolic link", [&] { fs::create_symlink("run", root / "link"); }, "link"},
        {"the current folder", [&] { fs::current_path(run()); }},
        {"a folder of the user", [&] { fs::create_directory(run() / "mine"); }},
        {"a file system without exchange",
         [] { before_change = [](const auto& call) { return call == "exchange" ? EINVAL : 0; }; }},
        {"a folder above that is read-only",
         [] {
             before_change = [first = true](const auto& call) mutable {
                 return call == "mkdir" && std::exchange(first, false) ? EACCES : 0;
             };
         }},
    };
    for (const auto& [description, prepare, target] : cases) {
        SCOPED_TRACE(description);
        reset();
        prepare();
        expect_not_exchanged(target);
        for (const std::string& name : names_in(root))
            EXPECT_TRUE(name == "run" || name == "link") << name;
    }
}

TEST_F(result_folders, are_not_exchanged_with_extended_attributes) {
    if (setxattr(run().c_str(), "user.origin", "car 7", 5, 0) != 0)
        GTEST_SKIP() << "this system does not keep extended attributes in temporary folders";
    expect_not_exchanged("run");
}

TEST_F(result_folders, are_written_even_if_a_temporary_folder_cannot_be_removed) {
    write(run() / "notes.txt", "mine");
    bool was_refused = false;
    before_change = [&](const std::string& call) {
        return call == "remove" && !std::exchange(was_refused, true) ? EBUSY : 0;
    };
    expect_not_exchanged("run");
    EXPECT_TRUE(was_refused);
    EXPECT_EQ(names_in(root).size(), 2U); // and the temporary folder
}

TEST_F(result_folders, of_a_run_that_ended_meanwhile_are_kept) {
    const contents others[] = {{{"hunter.csv", "other hunter"}}, {{"rcom.csv", "other rcom"}}};
    for (const contents& other_tables : others) {
        reset();
        bool is_first = true;
        before_change = [&](const std::string& call) {
            if (call == "exchange" && std::exchange(is_first, false))
                decode(run(), other_tables);
            return 0;
        };
        std::string message;
        try {
            decode(run(), new_tables);
        } catch (const rtrange::failure& error) {
            message = error.what();
        }
        EXPECT_TRUE(message.starts_with("another run has meanwhile replaced the tables in '"))
            << message;
        expect_whole(other_tables);
        decode(run(), new_tables);
        expect_whole(new_tables);
    }
}

TEST_F(result_folders, give_back_what_came_in_the_last_moment) {
    bool can_be_undone = true;
    int exchanges = 0;
    const auto add_notes = [&](const std::string& call) {
        if (call != "exchange")
            return 0;
        if (++exchanges == 1)
            write(run() / "notes.txt", "mine");
        return exchanges == 1 || can_be_undone ? 0 : EIO;
    };
    before_change = add_notes;
    decode(run(), new_tables);
    EXPECT_EQ(exchanges, 2);
    expect_whole(new_tables);
    EXPECT_EQ(content(run() / "notes.txt"), "mine");
    EXPECT_EQ(names_in(root), std::set<std::string>{"run"});

    reset();
    can_be_undone = false;
    exchanges = 0;
    before_change = add_notes;
    std::string message;
    try {
        decode(run(), new_tables);
    } catch (const rtrange::failure& error) {
        message = error.what();
    }
    const auto place = message.find(".partial-");
    ASSERT_NE(place, std::string::npos) << message;
    const std::string folder = "run" + message.substr(place, message.find('\'', place) - place);
    EXPECT_EQ(content(root / folder / "notes.txt"), "mine");
    EXPECT_TRUE(message.ends_with("the new tables are in '" + run().string() + "'")) << message;
    expect_whole(new_tables);
}

} // namespace
} // namespace rtrange_test
