// A host that drives one instance of the plug-in and stops the program at the first thing that must
// not be.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "tests/harness/recording_zelc.h"
#include "zel/formatter.h"
#include "zel/log.h"

namespace fuzz {

/// Takes an input apart, byte after byte; gives zeros when it has come to its end.
class input {
public:
    explicit input(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

    bool empty() const { return rest_.empty(); }
    std::uint8_t byte();
    /// The next `size` bytes, or what is left of them.
    std::span<const std::uint8_t> take(std::size_t size);

private:
    std::span<const std::uint8_t> rest_;
};

/// One instance with everything that it was given. Its end checks that all of it came back.
class instance {
public:
    /// `format_type` chooses the formatter.
    explicit instance(const char* format_type);
    ~instance();
    instance(const instance&) = delete;
    instance& operator=(const instance&) = delete;

    /// Reads one raw package from the input and transforms it; checks every package that comes out.
    /// A raw package is the step of its timestamp, which can go backwards, two bytes of size, and
    /// the data. Gives the status.
    zel_status_t transform_next(input& input);

    bool allocator_fails = false;
    bool log_fails = false;

private:
    static zel_status_t resolve(void* handle, const char* service_type, void** target,
                                zel_error_details_t** error);
    static zel_status_t can_resolve(void* handle, const char* service_type, bool* result,
                                    zel_error_details_t** error);
    static zel_status_t log(void* handle, const zel_log_info_t* record,
                            zel_error_details_t** error);
    static void* allocate_array(std::size_t count, std::size_t element_size, void* context);

    zel_log_t log_;
    zel_service_locator_t services_;
    zel_allocator_t allocator_;
    const zel_formatter_dispatch_table_t& formatter_;
    void* handle_ = nullptr;
    const zel_formatter_raw_package_transformation_support_t* transformation_ = nullptr;
    std::uint64_t timestamp_ = 1000;
};

/// Feeds a whole input to one instance, without any failure of the host.
void transform_all(const char* format_type, std::span<const std::uint8_t> bytes);

} // namespace fuzz
