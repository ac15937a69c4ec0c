// Texts of the page docs/records.md.
#pragma once

namespace rtrange {

inline constexpr const char* page_beginning = R"(# Columns and records

Written by `rtrange fields --markdown`. The first part describes the columns of the view `measured`, which `rtrange decode` and `rtrange report` show by default. The second part describes the plug-in's records, which `--view record` shows field by field. `include/zel/rt_range_records.h` declares the records for C and C++.

# The view measured

A row is what is known of a unit, or of RCOM, after one packet. A cell is empty in CSV, and NaN in HDF5, until the packet or status channel named under "Brought by" has come from the row's own unit since the decoder last started; then it keeps the latest value. The decoder starts anew at the beginning, after a gap longer than `--restart-gap`, and when time steps back.

| Brought by | What has to come |
|---|---|
| NCOM | an NCOM packet of the unit, direct or wrapped in RCOM |
| NCOM channel n | an NCOM packet of the unit with status channel n; each packet has one status channel |
| NCOM of the hunter | an NCOM packet of the hunter |
| extended range | an RCOM extended range packet, in the targets' tables one about this target |
| extended range channel n | the same with status channel n |
| lane, lane channel n | an RCOM lane packet, and one with status channel n |
| RCOM | any RCOM packet |
| the capture | every frame |

## What the view measured does differently

| Columns | View `measured` | Record |
|---|---|---|
| all | Empty until received. | 0 until received. Before addresses are known, also what other units have sent. |
| `heading` | Of the packet, 0 to 360. | After a filter that follows no step of 5° or more and is shared by all units: it can stay at an old value, or at another unit's. |
| `vehicle_velocity_x`, `vehicle_velocity_y`, and in km/h | Computed with the heading of the same packet. | Computed with the filtered heading. |
| `latitude`, `longitude` | Degrees of NCOM are converted with pi. | Converted with a rounded pi, which moves positions by up to half a metre. |
| `relative_heading`, `relative_pitch`, `relative_roll` | From the latest values of both units, -180 to 180. | With the filtered heading. `relative_roll` is not wrapped. |
| `relative_accel_*`, `relative_rate_*` | From the latest values of both units; empty while either is unknown. | Against 0 while the hunter is unknown. |
| `position_accuracy_horizontal`, `velocity_accuracy_horizontal` | Root of the sum of the squares of north and east. | North times the square root of 2. |
| `curvature` | Compares the speed with this `velocity_accuracy_horizontal`; empty before NCOM channel 4. | 0 before NCOM channel 4. |
| `output_displacement_y`, `output_displacement_z` | Signed. | Unsigned: -1 mm becomes 65.535 m. |
| `velocity_lateral_kmh` of RCOM | The lateral velocity. | The longitudinal velocity. |
| `ttc_longitudinal`, `ttc_lateral` | Empty unless approaching with more than 0.1 m/s. | Negative while moving apart, 2.2250738585072014e-308 if there is none. |
| `gps_time_us` | GPS time of the packet since 1970, without leap seconds: 18 s ahead of UTC since 2017. Subtract `utc_offset` seconds for UTC. | `utc_time_us`: one second less, and only while `utc_offset_valid` is 1. |
| `gps_minutes` | Empty before NCOM channel 0. | Counts from 0 before that. |
| `utc_offset` | Empty unless `utc_offset_valid` is 1. | Always as received. |
| `position_mode` | Position mode of NCOM channel 0. | Not stored. |
| `checksum_error` | 0 if the three checksums of the packet are right, otherwise 1. Senders sum either all bytes from the sync byte up to each checksum, or each part from the previous checksum on; both are accepted, if all three are summed in the same way. The sync byte itself is not summed. | Not stored; the plug-in verifies no checksum. |
| `ncom_status_channel` | Of the unit's own packet. | In the hunter's record only: of the last packet of any unit. |
| `rcom_channel_value` | Of the last packet about this target. | Of the last packet about any unit; for the hunter, of status channel 5. |
| `rcom_channel_17_a`, `_b`, `_c` | Of the last packet about this target. | Of the last packet about any unit. |

Values that the wire marks as invalid are empty:

- `satellites` and ages (`*_age` of one byte): 255
- `position_mode`, `velocity_mode`, `orientation_mode`: above 32, which have no name
- `rcom_channel_value`, and `channel_0_scaled` and `channel_5_scaled` of RCOM: 65535

Columns of the record that are left out:

- `ttc_longitudinal_accelerated`, `ttc_lateral_accelerated`: the absolute value of the solution of an equation in which the range has the opposite sign. The solution may lie in the past, and nothing in the record tells whether it does.
- `utc_time_us`, `gps_time_valid`: see `gps_time_us`.
- `vehicle_velocity_unused`, `vehicle_velocity_unused_kmh`, `reserved_*`: never received.
- `sample_*`: in tables of their own, with `--samples`.
- in the tables `hunter` and `unidentified`: everything that extended range packets bring, and `relative_*`. The hunter has no range to itself.

## Axes, signs and reference points

- **Axes of a unit**: x points forward, y to the left, z up. Columns whose meaning says otherwise, such as "to the right", "down" or "sign as received", keep the axes of the sender.
- **Level frame**: turned by pitch and roll, so that x and y are horizontal; x points along the heading.
- **Directions over ground**: `velocity_north` is positive to the north. `velocity_east` is positive to the **west**, `velocity_down` is positive **upward**: signs are those of the record.
- **Angles**: heading 0 is north, 90 is east. Pitch is positive with the nose down, roll with the right side down.
- **Rates**: right-handed about the axes of the unit. `rate_z` and `curvature` are positive while turning left, so the heading falls.
- **Ranges**: from the hunter to the target. Longitudinal is positive if the target is ahead, lateral if it is to the left. Range rates are their changes per second: negative while a target ahead comes closer.
- **Differences**: `relative_accel_*` and `relative_rate_*` are the target's value minus the hunter's, each in the axes of its own unit; nothing is turned into the hunter's axes. `relative_heading`, `relative_pitch` and `relative_roll` are the hunter's angle minus the target's.
- **Reference points**: to which point of the vehicle position, velocities and accelerations belong, and between which points of the vehicles RCOM measures ranges, is not known: the packets do not say. `output_displacement_*` is the lever arm of the sender's output point, if it sends one; from where it is measured is not known either.
- **Position**: the geodetic datum, the reference of the altitude, and the signs of latitude and longitude are those of the sender, and not known here. Its manual states them.

## How far values can be trusted

- **Navigation status**: motion, position and angles are reliable only while `navigation_status` is 4 (locked). A unit that is initialising sends NCOM, too.
- **Rows of range packets** repeat the target's last NCOM values. Use rows whose `packet` is `ncom` or `wrapped_ncom` for the motion of a target, and rows with `range` for ranges.
- **Resolution** of NCOM: accelerations 0.0001 m/s², rates 0.0006 deg/s, velocities 0.0001 m/s, angles 0.00006 deg, time 1 ms. The altitude is a single-precision number. Of RCOM: ranges 0.001 m, range rates and velocities 0.01 m/s, accelerations 0.01 m/s².
- **Position of a target from RCOM** (status channels 8 and 10) replaces that from NCOM in the rows of range packets, until the target's next NCOM packet. Its resolution is 0.0000001 deg, about 1 cm. A pair of values that are both 0 is ignored.
- **Accuracies** are the unit's own estimates. Which confidence they stand for, for example one standard deviation, is not known.
- **Status values** (everything from a status channel) are as old as the last packet with that channel, so they change more slowly than rows are written.
- **Ages**: the unit of the one-byte `*_age` columns is not known. A `velocity_accuracy_age` of 150 or more is outdated; for the others, no such limit is known. `differential_age` is in seconds.
- **Accelerations**: whether they contain gravity is not known; the `accel_z` of a vehicle at rest tells.
- **Ranges and range rates** are as computed by the RT-Range unit. Its method and delay are not known. A packet with a longitudinal range above 1000 km is ignored.
- **Times to collision** are the range divided by the range rate at that moment, each along its own axis. A vehicle that passes at a distance has a longitudinal time to collision, too: look at the lateral range.
- **Time**: `reference_timestamp` and `time_s` are the clock of the computer that recorded the capture, when the frame arrived. `gps_time_us` is the time that the unit states in the packet.
- **Checksums**: a row with a `checksum_error` of 1 is decoded all the same, and any of its values may be wrong.
- **`packet_count`** counts all NCOM packets of unknown senders for the hunter, until RCOM has identified the units.
- **Columns described only by their bytes or channel** (`unit_value_*`, `channel_*`, `lane_*`, `rcom_channel_*`, `ext_range_*` and others): scaled as stated; meaning and unit are not known.

)";

inline constexpr const char* records_beginning = R"(# The records

## Layout

The data of a `zel.rtrange` package are a tag of 4 bytes, then one of the two records. All numbers are little-endian and follow one another without gaps. Offsets count from the start of the record; within the data of the package, they are 4 bytes higher. Only the numbers in the names `reserved_89`, `reserved_97`, `reserved_313` and `reserved_321` of the RCOM record count from the start of the data.

| Type | Content |
|---|---|
| u8, u16, u32, u64 | unsigned integer of 8, 16, 32 or 64 bits |
| s16, s32, s64 | signed integer of 16, 32 or 64 bits, two's complement |
| f64 | IEEE 754 number of 64 bits |
| ipv4 | the four bytes of an IPv4 address, in the order of the wire |

## Records are states

A record holds the latest value of everything received since the last reset, not the content of one packet. "Brought by" names the packet or status channel that writes a field. Fields whose packet or status channel has not been received yet are 0; a received value may be 0, too.

An extended range packet about a target produces an NCOM record of that target even before the target's first NCOM packet: its `packet_count` is then 0, and so are all fields that only NCOM packets set.

An NCOM record that directly follows an RCOM record in the result of one `transform` call was produced by that RCOM datagram: by a wrapped NCOM packet if its `packet_count` is one higher than in the last state of that target, and by an extended range packet if it is the same. RCOM also changes fields of the hunter's record, but does not produce it: the changes appear in the next record that an NCOM packet of the hunter produces.

## Samples

Every thirtieth NCOM packet since the last reset, direct or wrapped and counted over all units, completes a batch. It produces thirty additional NCOM records, before its other records. They differ only in the `sample_*` fields: the first one has the filtered values of the first packet of the batch, the second one those of the second packet, and so on, whichever units sent them. Everything else is the same in all thirty and belongs to the thirtieth packet: the header of the package with the reference timestamp, the tag, and the record of the unit that sent this packet. Only `utc_time_us` and `gps_time_valid` are those after the unit's previous packet. The records do not contain the times of the individual samples.

The filter starts from zero with each batch, so the first samples are close to 0. The record of the unit keeps the last sample until the unit completes another batch.

## Signs, ranges and values

- **Axes**: x points forward, y to the left and z up. Fields whose meaning says otherwise, such as "to the right" or "sign as received", keep the axes of the sender.
- **Heading**: 0 is north, 90 is east. Its range is not limited: NCOM sends a signed angle, RCOM status channel 10 an unsigned one.
- **Pitch and roll**: pitch is positive with the nose down, roll with the right side down. Their ranges are not limited.
- **Differences of angles**: if the angles are between -360 and 360, `relative_heading` and `relative_pitch` are between -180 and 180, and `relative_roll` is between -360 and 360.
- **Position**: the geodetic datum, the reference of the altitude, and the signs of latitude and longitude are those of the sender. Its manual states them.
- **Ages**: the fields `*_age` of type u8 are bytes as received. Their unit is not known. The decoder regards a `velocity_accuracy_age` of 150 or more as outdated; it does not evaluate the others.
- **Modes and states**: `navigation_status`, `orientation_mode` and `velocity_mode` are stored as received; their values are listed at the end of this page. The fields that are described only by their bytes are stored as received, too; their meaning is not known. A `navigation_status` of 11 does not occur, because such packets are dropped. `utc_offset_valid` and `gps_time_valid` are 0 or 1.
)";

} // namespace rtrange
