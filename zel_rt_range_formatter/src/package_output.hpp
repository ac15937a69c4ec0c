// The output packages of one raw package.
#pragma once

#include <cstdint>

#include "extensibility/owned_package.hpp"
#include "zel/raw_package.h"
#include "zel_rt_range_formatter/records/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/records/rcom_unit_record.hpp"

namespace zel::toolbox::rt_range {

/// Creates packages with the header values of one raw package and appends them to a list. Borrows
/// the raw package, the list and the allocator. The functions that add a package throw the
/// exceptions for the host's error records.
class package_output {
public:
    package_output(const zel_raw_package_t& raw_package, extensibility::package_list& packages,
                   const zel_allocator_t* allocator);

    std::uint64_t reference_timestamp() const { return raw_package_.reference_timestamp; }

    /// Adds a "zel.eth" package: the Ethernet frame of at least 14 bytes, with its two MAC
    /// addresses exchanged.
    void add_ethernet_frame(const std::uint8_t* frame, std::uint64_t frame_size);

    /// Adds an 873-byte "zel.rtrange" package: the tag of the unit (0 to 4), then its record.
    void add_ncom(const ncom_unit_record& record, std::uint32_t unit);

    /// Adds a 1191-byte "zel.rtrange" package: the RCOM tag, then the record.
    void add_rcom(const rcom_unit_record& record);

private:
    template <typename Record>
    void add_record(std::uint32_t tag, const Record& record);
    void fill_header(zel_package_t& package) const;

    const zel_raw_package_t& raw_package_;
    extensibility::package_list& packages_;
    const zel_allocator_t* allocator_;
};

} // namespace zel::toolbox::rt_range
