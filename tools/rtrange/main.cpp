// rtrange: decodes captures of an RT-Range system with the formatter plug-in.

#include <cstdio>
#include <exception>

#include "tools/rtrange/command_line.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/platform.hpp"
#include "tools/rtrange/standard_output.hpp"

int main(int argc, char** argv) {
    using namespace rtrange;
    try {
        set_up_process();
        const int code = run_command_line(program_arguments(argc, argv));
        flush_standard_output();
        return code;
    } catch (const std::exception& error) {
        std::fflush(stdout); // so that the message comes last
        std::fprintf(stderr, "rtrange: %s\n", message_of(error));
        return exit_code_of(error);
    }
}
