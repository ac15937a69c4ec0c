#include <cstdint>
#include <optional>

#include "zel_rt_range_formatter/src/field_readers.hpp"
#include "zel_rt_range_formatter/src/ncom_packet.hpp"
#include "zel_rt_range_formatter/src/rcom_packet.hpp"
#include "zel_rt_range_formatter/src/rt_range_formatter_base.hpp"

namespace zel::toolbox::rt_range {
namespace {

namespace log = extensibility::log;
namespace level = extensibility::log::level;

constexpr std::uint64_t meta_info_size = 16;

constexpr const char* wrapped_ncom_function =
    "zel::toolbox::rt_range::rt_range_formatter_base::rcom_process_wrapped_ncom";

} // namespace

//  0   1   2     4         8             20
//  +---+---+-----+---------+-------------+---------------------
//  | W | 3 | len | address | 12 bytes    | NCOM packet, E7 ...
//  +---+---+-----+---------+-------------+---------------------
bool rt_range_formatter_base::rcom_process_wrapped_ncom(const datagram& datagram,
                                                        std::uint32_t& unit) {
    const std::uint8_t* const frame = datagram.payload;
    const std::uint64_t behind_header = datagram.payload_size - rcom_header_size;
    if (behind_header < meta_info_size) {
        log::write(logger_, level::malformed, log::here(wrapped_ncom_function),
                   "Unexpected wrapped NCOM meta info frame size (Expected at least = %u, Received "
                   "size = %u).",
                   static_cast<unsigned>(meta_info_size), static_cast<unsigned>(behind_header));
        return false;
    }
    const std::uint64_t ncom_size = behind_header - meta_info_size;
    if (ncom_size < ncom_packet_size) {
        log::write(logger_, level::malformed, log::here(wrapped_ncom_function),
                   "Unexpected wrapped NCOM frame size (Expected at least = %u, Received size = "
                   "%u).",
                   static_cast<unsigned>(ncom_packet_size), static_cast<unsigned>(ncom_size));
        return false;
    }
    const std::uint8_t* const ncom = frame + wrapped_ncom_byte::ncom;
    if (is_structure_b(ncom)) {
        log::write(logger_, level::malformed, log::here(wrapped_ncom_function),
                   "NCOM structure B is not supported.");
        return false;
    }
    if (ncom[0] != ncom_sync_byte) {
        log::write(logger_, level::malformed, log::here(wrapped_ncom_function),
                   "Invalid sync byte. Expected = %u, Received = %u.", unsigned{ncom_sync_byte},
                   unsigned{ncom[0]});
        return false;
    }
    const std::uint8_t* const address = frame + wrapped_ncom_byte::unit_address;
    const std::optional<std::uint32_t> identified = wrapped_unit_of(address);
    if (!identified) {
        log::write(logger_, level::skipped, log::here(wrapped_ncom_function),
                   "Unknown target (IP ' %u.%u.%u.%u ).", unsigned{address[0]},
                   unsigned{address[1]}, unsigned{address[2]}, unsigned{address[3]});
        return false;
    }
    unit = *identified;
    current_unit_index_ = unit;
    // The wrapped unit is the source, and the RT-Range unit that relayed it the destination.
    endpoint_header& endpoint = unit_record(unit).endpoint;
    charge(endpoint, datagram);
    endpoint.source_ip = read_unsigned(address, 4);
    endpoint.destination_ip = datagram.source_ip;
    return true;
}

/// The unit with this address, targets first. The comparison takes in the four bytes behind the
/// address, so that they have to be zero.
std::optional<std::uint32_t>
rt_range_formatter_base::wrapped_unit_of(const std::uint8_t* address) const {
    const std::uint64_t wide =
        std::uint64_t{read_unsigned(address + 4, 4)} << 32 | read_unsigned(address, 4);
    for (std::uint32_t target = 1; target <= target_count; ++target)
        if (wide == target_ips_[target - 1])
            return target;
    if (wide == hunter_ip_)
        return hunter;
    return std::nullopt;
}

} // namespace zel::toolbox::rt_range
