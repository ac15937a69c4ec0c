#include "simulation/ncom_packet.hpp"

#include <numeric>

namespace zel::simulation {
namespace {

void write_vector(wire_writer& writer, const std::array<std::int32_t, 3>& vector) {
    for (const std::int32_t element : vector)
        writer.s24(element);
}

/// Each checksum is the sum of all preceding bytes except the sync byte.
void write_checksum(wire_writer& writer) {
    const bytes& written = writer.written();
    writer.u8(static_cast<std::uint8_t>(std::accumulate(written.begin() + 1, written.end(), 0U)));
}

} // namespace

bytes encode(const ncom_packet& packet) {
    wire_writer writer;
    writer.u8(packet.sync).u16(packet.time_in_minute_ms);
    write_vector(writer, packet.acceleration);
    write_vector(writer, packet.rate);
    writer.u8(packet.navigation_status);
    write_checksum(writer);
    writer.f64(packet.latitude).f64(packet.longitude).f32(packet.altitude);
    write_vector(writer, packet.velocity);
    writer.s24(packet.heading).s24(packet.pitch).s24(packet.roll);
    write_checksum(writer);
    writer.u8(packet.status_channel).append(packet.status_data);
    write_checksum(writer);
    return writer.written();
}

} // namespace zel::simulation
