// rtrange: decodes captures of an RT-Range system with the formatter plug-in.

#include <cstdio>
#include <exception>
#include <new>

#include "tools/rtrange/command_line.hpp"
#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/platform.hpp"
#include "tools/rtrange/standard_output.hpp"

namespace {

using namespace rtrange;

int end_with_failure(const char* message, exit_code code) {
    std::fflush(stdout); // so that the message comes last
    std::fprintf(stderr, "rtrange: %s\n", message);
    return code;
}

} // namespace

int main(int argc, char** argv) {
    try {
        set_up_process();
        const int code = run_command_line(program_arguments(argc, argv));
        flush_standard_output();
        return code;
    } catch (const usage_failure& error) {
        return end_with_failure(error.what(), exit_usage);
    } catch (const std::bad_alloc&) {
        return end_with_failure("not enough memory", exit_failure);
    } catch (const std::exception& error) {
        return end_with_failure(error.what(), exit_failure);
    }
}
