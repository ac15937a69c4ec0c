#include "tools/zelc_check/zelc.hpp"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "tools/zelc_check/rule.hpp"

namespace zelc_check {
namespace {

std::atomic<bool> foreign_context = false;

void* allocate_array(std::size_t count, std::size_t element_size, void* context) {
    if (context != &foreign_context)
        foreign_context = true;
    return std::calloc(count, element_size);
}

} // namespace

const zel_allocator_t allocator{nullptr, nullptr, nullptr,         &allocate_array,
                                nullptr, nullptr, &foreign_context};

bool got_foreign_context() {
    return foreign_context;
}

template <typename Function>
Function zelc::find(const char* name) {
    try {
        return library_.function<Function>(name);
    } catch (const std::runtime_error&) {
        missing_.append(missing_.empty() ? "" : " ").append(name);
        return nullptr;
    }
}

zelc::zelc(const std::filesystem::path& file)
    : library_(file), create_error(find<decltype(create_error)>("zel_error_details_create")),
      get_code(find<decltype(get_code)>("zel_error_details_get_code")),
      get_description(find<decltype(get_description)>("zel_error_details_get_description")),
      destroy_error(find<decltype(destroy_error)>("zel_error_details_destroy")),
      create_package(find<decltype(create_package)>("zel_package_create")),
      create_package_with_data(
          find<decltype(create_package_with_data)>("zel_package_create_assign_data")),
      assign_format_type(find<decltype(assign_format_type)>("zel_package_assign_format_type")),
      destroy_package(find<decltype(destroy_package)>("zel_package_destroy")),
      check_state(find<decltype(check_state)>("zel_raw_package_check_state_value")) {}

error_slot::error_slot(error_slot&& other) noexcept
    : library_(other.library_), record_(std::exchange(other.record_, nullptr)) {}

void error_slot::clear() {
    if (record_ != nullptr)
        library_.destroy_error(std::exchange(record_, nullptr));
}

error_slot make_error(const zelc& library, std::uint32_t code, const char* description) {
    error_slot slot(library);
    library.create_error(slot.target(), code, description);
    if (slot.get() == nullptr)
        throw not_checkable("zel_error_details_create stored no record");
    return slot;
}

package::package(package&& other) noexcept
    : library_(other.library_), package_(std::exchange(other.package_, nullptr)) {}

package::~package() {
    if (package_ != nullptr)
        library_.destroy_package(&allocator, package_, nullptr);
}

std::span<std::uint8_t> package::header() const {
    return {reinterpret_cast<std::uint8_t*>(package_), sizeof(zel_package_t)};
}

std::span<std::uint8_t> package::data(std::size_t size) const {
    return {reinterpret_cast<std::uint8_t*>(package_ + 1), size};
}

void package::fill(std::uint8_t value, std::size_t size) const {
    const auto all = header();
    std::ranges::fill(all.first(offsetof(zel_package_t, host_block)), value);
    std::ranges::fill(
        all.subspan(offsetof(zel_package_t, pass_through_block),
                    offsetof(zel_package_t, size) - offsetof(zel_package_t, pass_through_block)),
        value);
    std::memset(package_ + 1, value, size);
}

package make_package(const zelc& library, std::size_t size) {
    error_slot error(library);
    zel_package_t* created = nullptr;
    library.create_package(&allocator, size, &created, error.target());
    if (created == nullptr)
        throw not_checkable("zel_package_create stored no package");
    return {library, created};
}

package make_package(const zelc& library, const char* format_type,
                     std::span<const std::uint8_t> data) {
    error_slot error(library);
    zel_package_t* created = nullptr;
    library.create_package_with_data(&allocator, format_type, data.data(), data.size(), &created,
                                     error.target());
    if (created == nullptr)
        throw not_checkable("zel_package_create_assign_data stored no package");
    return {library, created};
}

} // namespace zelc_check
