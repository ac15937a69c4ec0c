# Script: writes OUTPUT, the C++ source of watch_page.hpp, from the file PAGE.

# An array of bytes, because compilers limit the length of string literals.
file(READ ${PAGE} hexadecimal HEX)
string(REGEX REPLACE "(..)" "0x\\1," bytes "${hexadecimal}")
file(WRITE ${OUTPUT} "// Written by the build.
#include \"tools/rtrange/watch/watch_page.hpp\"

namespace rtrange {
namespace {

const unsigned char page_bytes[] = {${bytes}};

} // namespace

std::string_view watch_page() {
    return {reinterpret_cast<const char*>(page_bytes), sizeof(page_bytes)};
}

} // namespace rtrange
")
