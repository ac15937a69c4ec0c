// A library loaded at run time.
#pragma once

#include <filesystem>
#include <string>

namespace zel::host {

/// Loads a shared library, and unloads it when destroyed.
class shared_library {
public:
    /// Throws std::runtime_error with the system's reason when the file cannot be loaded.
    explicit shared_library(const std::filesystem::path& file);
    ~shared_library();
    shared_library(const shared_library&) = delete;
    shared_library& operator=(const shared_library&) = delete;

    /// An exported function. Throws std::runtime_error if there is none of this name.
    template <typename Function>
    Function function(const char* name) const {
        return reinterpret_cast<Function>(symbol(name));
    }

private:
    using any_function = void (*)();
    any_function symbol(const char* name) const;

    std::string name_;
    void* handle_;
};

} // namespace zel::host
