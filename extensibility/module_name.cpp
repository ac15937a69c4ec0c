#include "extensibility/module_name.hpp"

#include <cstring>

#ifdef _WIN32
#include <windows.h>
// Start of the module that contains this code; defined by the linker.
extern "C" IMAGE_DOS_HEADER __ImageBase;
#else
#include <dlfcn.h>
#endif

namespace zel::extensibility::log {

const char* last_path_component(const char* path) {
    const char* component = path;
    for (const char* character = path; *character != '\0'; ++character)
        if (*character == '/' || *character == '\\')
            component = character + 1;
    return component;
}

const char* module_name(module_path& path) {
#ifdef _WIN32
    GetModuleFileNameA(reinterpret_cast<HMODULE>(&__ImageBase), path.data(),
                       static_cast<DWORD>(path.size()));
#else
    Dl_info info{};
    // Unreachable if false: dladdr finds the library of a function that is running.
    if (dladdr(reinterpret_cast<const void*>(&module_name), &info) != 0)
        std::strncpy(path.data(), last_path_component(info.dli_fname), path.size() - 1);
#endif
    return last_path_component(path.data());
}

} // namespace zel::extensibility::log
