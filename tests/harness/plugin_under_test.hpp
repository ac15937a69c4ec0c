// The built plug-in, driven through its two exports by a host that keeps accounts.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "tests/harness/recording_zelc.h"
#include "zel/formatter.h"
#include "zel/log.h"

namespace harness {

using bytes = std::vector<std::uint8_t>;

/// Path of the plug-in file, and its name without folder.
extern const char* const plugin_file;
std::string plugin_file_name();

/// Dispatch record of "zel.rtrange" (recorder) or "zel.eth.rtrange" (ethernet).
const zel_formatter_dispatch_table_t& recorder_formatter();
const zel_formatter_dispatch_table_t& ethernet_formatter();

/// A package as the plug-in handed it over.
struct package {
    zel_package_t header;
    std::string format_type;
    bytes data;

    /// A field of the data at this offset.
    template <typename T>
    T at(std::size_t offset) const {
        T value;
        std::memcpy(&value, data.data() + offset, sizeof(value));
        return value;
    }
    double f64(std::size_t offset) const { return at<double>(offset); }
    std::uint64_t f64_bits(std::size_t offset) const { return at<std::uint64_t>(offset); }
    std::uint8_t u8(std::size_t offset) const { return data[offset]; }
    std::uint16_t u16(std::size_t offset) const { return at<std::uint16_t>(offset); }
    std::uint32_t u32(std::size_t offset) const { return at<std::uint32_t>(offset); }
    std::int32_t s32(std::size_t offset) const { return at<std::int32_t>(offset); }
    std::uint64_t u64(std::size_t offset) const { return at<std::uint64_t>(offset); }
};

struct log_record {
    std::uint32_t level;
    std::string message;
    std::string module;
    std::string file;
    std::string function;
    std::uint32_t line;
    std::uintptr_t reserved;
};

/// An error record's content; code 0 and no text when there was none.
struct error {
    std::uint32_t code = 0;
    std::string description;
};

/// Reads an error record and gives it back to the host.
error take_error(zel_error_details_t* details);

/// What one call of `transform` gave.
struct outcome {
    zel_status_t status = 0;
    harness::error error;
    std::vector<package> packages;
    std::vector<log_record> logs;

    /// The decoded packages, without the bare Ethernet frame.
    std::vector<package> decoded() const;
};

/// The host's services: logging, which can be absent or fail.
class host_services {
public:
    host_services();
    host_services(const host_services&) = delete;
    host_services& operator=(const host_services&) = delete;

    zel_service_locator_t locator;
    zel_log_t log;
    bool offers_log = true;
    unsigned log_calls = 0;
    unsigned failing_log_call = 0; ///< this log call, counted from 1, fails; 0 fails none
    /// When not 0, `can_resolve` resp. `resolve` fail with this code and description.
    std::uint32_t can_resolve_code = 0;
    std::uint32_t resolve_code = 0;
    const char* lookup_description = "lookup failed";
    std::vector<log_record> logs;
    std::function<void()> on_next_log; ///< called from within the next log call
};

/// A raw package in a heap block of exactly its size, so that a sanitizer sees every byte read too
/// far.
struct raw_package {
    bytes data;
    std::uint16_t source_id = 0x1234;
    std::uint16_t source_info = 0x5A7C;
    std::uint32_t state_value = 0x0BADF00D;
    std::array<std::uint8_t, 16> pass_through_block{1, 2,  3,  4,  5,  6,  7,  8,
                                                    9, 10, 11, 12, 13, 14, 15, 16};
    std::uint64_t reference_timestamp = 1000;

    bytes block() const;
};

/// A frame behind the source header resp. the vehicle bus header.
raw_package recorder_package(const bytes& frame, std::uint64_t timestamp = 1000);
raw_package ethernet_package(const bytes& frame, std::uint64_t timestamp = 1000);

/// One instance of a formatter. Its end checks that nothing has leaked.
class instance {
public:
    explicit instance(const zel_formatter_dispatch_table_t& formatter = recorder_formatter());
    ~instance();
    instance(const instance&) = delete;
    instance& operator=(const instance&) = delete;

    /// Decodes one raw package. On success all packages are copied and given back; on failure the
    /// out-parameters must have been left alone.
    outcome transform(const raw_package& raw);

    /// Decodes an Ethernet frame in the wrapping that this formatter takes.
    outcome decode(const bytes& frame, std::uint64_t timestamp = 1000);

    void* service(const char* service_type);

    host_services services;
    void* handle = nullptr;
    const zel_service_locator_t* locator = nullptr;
    const zel_formatter_raw_package_transformation_support_t* transformation = nullptr;
    zel_allocator_t allocator;
    int live_arrays = 0;
    unsigned array_requests = 0;
    std::size_t last_array_count = 0;
    bool allocator_fails = false;

private:
    const zel_formatter_dispatch_table_t& formatter_;
};

} // namespace harness
