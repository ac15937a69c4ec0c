#include "host/loader/shared_library.hpp"

#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace zel::host {

#ifdef _WIN32

shared_library::shared_library(const std::filesystem::path& file)
    : name_(file.string()), handle_(LoadLibraryW(absolute(file).wstring().c_str())) {
    if (handle_ == nullptr)
        throw std::runtime_error("cannot load '" + name_ + "': Windows error " +
                                 std::to_string(GetLastError()));
}

shared_library::~shared_library() {
    FreeLibrary(static_cast<HMODULE>(handle_));
}

shared_library::any_function shared_library::symbol(const char* name) const {
    const FARPROC address = GetProcAddress(static_cast<HMODULE>(handle_), name);
    if (address == nullptr)
        throw std::runtime_error("'" + name_ + "' is not a formatter plug-in: it has no export '" +
                                 name + "'");
    return reinterpret_cast<any_function>(address);
}

#else

shared_library::shared_library(const std::filesystem::path& file)
    : name_(file.string()), handle_(dlopen(absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr)
        throw std::runtime_error("cannot load '" + name_ + "': " + dlerror());
}

shared_library::~shared_library() {
    dlclose(handle_);
}

shared_library::any_function shared_library::symbol(const char* name) const {
    void* const address = dlsym(handle_, name);
    if (address == nullptr)
        throw std::runtime_error("'" + name_ + "' is not a formatter plug-in: it has no export '" +
                                 name + "'");
    return reinterpret_cast<any_function>(address);
}

#endif

} // namespace zel::host
