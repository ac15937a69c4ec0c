// Fields of a record as cells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "tools/rtrange/tables/column.hpp"
#include "zel_rt_range_formatter/records/field.hpp"

namespace rtrange {

/// Where a field is in a record of at least eight bytes: in an eight-byte word that lies within the
/// record.
class stored_field {
public:
    stored_field(const zel::toolbox::rt_range::field& field, std::size_t record_size);

    /// The cell that holds the field as it is stored.
    cell in(const std::uint8_t* record) const {
        std::uint64_t word = 0;
        std::memcpy(&word, record + word_offset_, sizeof(word));
        const std::uint64_t content = word >> shift_ & mask_;
        return (content ^ sign_) - sign_;
    }

private:
    std::size_t word_offset_;
    unsigned shift_;
    std::uint64_t mask_;
    std::uint64_t sign_; ///< sign bit of a signed integer; otherwise 0
};

} // namespace rtrange
