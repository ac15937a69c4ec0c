// The program rtrange while it runs.
#pragma once

#include <array>
#include <csignal>
#include <cstdio>
#include <string>
#include <utility>

#include <sys/wait.h>

#include "tests/harness/rtrange_program.hpp"

namespace rtrange_test {

/// The program at work: started, told to stop, and asked what it said.
class running_program {
public:
    running_program(const fs::path& folder, const std::string& arguments,
                    const std::string& preparation = "")
        // The shell hands its process over to the program and tells its number.
        : pipe_(popen(("cd " + folder.string() + "; echo $$; " + preparation + "exec " RTRANGE " " +
                       arguments + " 2>&1")
                          .c_str(),
                      "r")) {
        process_ = std::stoi(line());
    }

    running_program(const running_program&) = delete;
    running_program& operator=(const running_program&) = delete;

    /// A test that gave up leaves no program behind.
    ~running_program() {
        if (pipe_ == nullptr)
            return;
        signal(SIGKILL);
        pclose(pipe_);
    }

    std::string line() {
        std::array<char, 4096> text{};
        return std::fgets(text.data(), text.size(), pipe_) != nullptr ? text.data() : "";
    }

    pid_t process() const { return process_; }

    void signal(int number) const { kill(process_, number); }

    result end() {
        result result{-1, {}};
        for (std::string text = line(); !text.empty(); text = line())
            result.output += text;
        const int status = pclose(std::exchange(pipe_, nullptr));
        result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return result;
    }

private:
    FILE* pipe_;
    pid_t process_ = 0;
};

} // namespace rtrange_test
