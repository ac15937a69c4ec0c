"""Frames and captures for the test of the dissector."""
import decimal
import math
import os
import struct

PCAP_HEADER = struct.pack("<IHHiIII", 0xA1B23C4D, 2, 4, 0, 0, 65535, 1)  # nanoseconds, Ethernet
HEADERS = 42  # of Ethernet, IPv4 and UDP
NCOM_CHANNELS = [0, 2, 3, 4, 5, 12, 13, 14, 15, 16, 20, 26, 75, 76, 77, 1, 200]
LANE_CHANNELS = [0, 1, 2, 6, 7, 8, 9, 10, 15, 3]


def is_root():
    return os.geteuid() == 0


def nanoseconds(seconds):
    return int(decimal.Decimal(seconds) * 10**9)


def write(path, frames):
    """Each frame with a time of its own; a pair is a frame and its length before it was cut short."""
    with open(path, "wb") as file:
        file.write(PCAP_HEADER)
        for i, entry in enumerate(frames):
            frame, length = entry if isinstance(entry, tuple) else (entry, len(entry))
            file.write(struct.pack("<IIII", 1767607200 + i // 1000, i % 1000 * 1000000, len(frame), length) + frame)
    path.chmod(0o644)


def read(path):
    data = path.read_bytes()
    offset = 24
    while offset < len(data):
        length = struct.unpack_from("<I", data, offset + 8)[0]
        yield data[offset + 16:offset + 16 + length]
        offset += 16 + length


def datagram(port, payload, announced=None):
    """A frame with a UDP datagram; its headers may announce more bytes of payload than there are."""
    size = len(payload) if announced is None else announced
    return (bytes.fromhex("0200c30000ff0200c300000a0800") +
            struct.pack(">BBHHHBBH4s4s", 0x45, 0, size + 28, 0, 0, 64, 17, 0, bytes([195, 0, 0, 10]),
                        bytes([195, 0, 0, 255])) +
            struct.pack(">HHHH", port, port, size + 8, 0) + payload)


def with_checksums(ncom, starts=(1, 1, 1)):
    packet = bytearray(ncom)
    for start, checksum in zip(starts, (22, 61, 71)):
        packet[checksum] = sum(packet[start:checksum]) % 256
    return bytes(packet)


def ncom_packet(**changes):
    """An NCOM packet of zeros; changes are bytes by offset, as in b21=11."""
    packet = bytearray(72)
    packet[0] = 0xE7
    packet[21] = 4
    for name, value in changes.items():
        packet[int(name[1:])] = value
    return with_checksums(packet)


def rcom_packet(kind, size, stated=None):
    return bytes([0x57, kind]) + struct.pack("<H", size if stated is None else stated) + bytes(size - 4)


def malformed():
    """Frames, and the expert notes that are expected of them."""
    ncom, lane, ranges = ncom_packet(), rcom_packet(1, 133), bytearray(rcom_packet(2, 65))
    wrapped = rcom_packet(3, 92)[:20] + ncom
    far, unknown_target, unknown_channel = ranges[:], ranges[:], ranges[:]
    far[12:16] = struct.pack("<i", -1000000001)
    unknown_target[6] = 5
    unknown_channel[41] = 22
    too_short = "{}: expected at least {} bytes, received {}"
    cut = datagram(3000, ncom)
    return [
        (datagram(3000, ncom), ""),
        (datagram(3000, ncom[:71]), too_short.format("NCOM packet", 72, 71)),
        (datagram(3000, ncom[:1]), too_short.format("NCOM packet", 72, 1)),
        ((cut[:HEADERS + 60], len(cut)), too_short.format("NCOM packet", 72, 60) + " (cut short when recorded)"),
        (datagram(3000, b"\x57" + ncom[1:]), "Not NCOM: expected the sync byte 0xe7, received 0x57"),
        (datagram(3000, ncom_packet(b21=11)), "NCOM of structure B is not decoded"),
        (datagram(3000, ncom[:22] + b"\xff" + ncom[23:]), "NCOM with a wrong checksum"),
        (datagram(3003, lane), ""),
        (datagram(3003, lane[:3]), too_short.format("RCOM header", 4, 3)),
        (datagram(3003, lane[:132]), too_short.format("RCOM lane packet", 133, 132)),
        (datagram(3003, rcom_packet(1, 133, 128)),
         "RCOM lane packet: expected a stated length of at least 129 bytes, received 128"),
        (datagram(3003, rcom_packet(1, 133, 129)), ""),
        (datagram(3003, bytes(ranges)), ""),
        (datagram(3003, bytes(ranges[:64])), too_short.format("RCOM extended range packet", 65, 64)),
        (datagram(3003, rcom_packet(2, 65, 60)),
         "RCOM extended range packet: expected a stated length of at least 61 bytes, received 60"),
        (datagram(3003, rcom_packet(2, 65, 61)), ""),
        (datagram(3003, bytes(far)), "Longitudinal range above 1000 km"),
        (datagram(3003, bytes(unknown_target)), "Target number 5: expected 0 to 4"),
        (datagram(3003, bytes(unknown_channel)), "Unknown status channel 22"),
        (datagram(3003, wrapped), ""),
        (datagram(3003, wrapped[:91]), too_short.format("RCOM wrapped NCOM packet", 92, 91)),
        (datagram(3003, wrapped[:10]), too_short.format("RCOM wrapped NCOM packet", 92, 10)),
        (datagram(3003, wrapped[:20] + b"\x00" + wrapped[21:]),
         "Not NCOM: expected the sync byte 0xe7, received 0x00"),
        (datagram(3003, rcom_packet(4, 40)), "RCOM packet of type 4 is not decoded"),
        (datagram(3003, b"\x58" + lane[1:]), "Not RCOM: expected the sync byte 0x57, received 0x58"),
    ]


def varied_ncom(dice, number):
    packet = bytearray(dice.randbytes(72))
    packet[0] = 0xE7
    packet[21] = dice.choice([0, 1, 2, 3, 4, 10, 20, 99])
    struct.pack_into("<ddf", packet, 23, dice.uniform(-math.pi / 2, math.pi / 2), dice.uniform(-math.pi, math.pi),
                     dice.uniform(-500, 9000))
    packet[62] = NCOM_CHANNELS[number % len(NCOM_CHANNELS)]
    if packet[62] == 0 and number % 2:
        packet[67:71] = bytes(dice.choices(range(33), k=4))
    if dice.random() < 0.1:
        packet[63:71] = b"\xff" * 8  # often no value
    # Checksums of either kind, often with a wrong one.
    packet = bytearray(with_checksums(packet, dice.choice([(1, 1, 1), (1, 22, 61)])))
    packet[dice.choice([22, 61, 71])] ^= dice.choice([0, 1])
    return bytes(packet)


def varied_range(packet, dice, number):
    changed = bytearray(packet[:4] + dice.randbytes(61))
    changed[6] = packet[6]
    struct.pack_into("<i", changed, 12, dice.randrange(-10**9, 10**9))
    if dice.random() < 0.3:
        struct.pack_into("<h", changed, 18, dice.randrange(-12, 13))  # about the limit of times to collision
    channel = changed[41] = number % 22
    if channel == 9:
        changed[42:50] = packet[42:50] if packet[41] == 9 else bytes([195, 0, 0, 10, 195, 0, 0, 20 + packet[6]])
    elif channel in (18, 19):
        changed[42:50] = struct.pack("<ff", dice.uniform(-1e6, 1e6), dice.uniform(-1e-6, 1e-6))
    elif channel in (0, 5) and number % 3 == 0:
        changed[42:50] = b"\xff" * 8
    return bytes(changed)


def varied(source, dice):
    """The frames of a simulated run, with other values in all fields."""
    frames = []
    for number, frame in enumerate(read(source)):
        headers, payload = frame[:HEADERS], frame[HEADERS:]
        if frame[12:14] != b"\x08\x00" or len(payload) < 65:
            continue
        if payload[0] == 0xE7:
            payload = varied_ncom(dice, number)
        elif payload[1] == 3:
            payload = payload[:20] + varied_ncom(dice, number)
        elif payload[1] == 2:
            payload = varied_range(payload, dice, number // 2)
        else:
            payload = bytearray(payload[:4] + dice.randbytes(129))
            payload[49] = LANE_CHANNELS[number // 3 % len(LANE_CHANNELS)]
        frames.append(headers + bytes(payload))
    return frames


def damaged(source, dice, count):
    """Frames with changed bytes, of any length, cut short or with further bytes."""
    originals = [frame for frame in read(source) if frame[12:14] == b"\x08\x00"]
    frames = []
    for _ in range(count):
        original = dice.choice(originals)
        payload = bytearray(original[HEADERS:])
        for _ in range(dice.choice([0, 0, 1, 3, 20])):
            payload[dice.randrange(len(payload))] = dice.randrange(256)
        payload = bytes(payload[:dice.randrange(len(payload) + 1)]) if dice.random() < 0.5 else bytes(payload)
        payload += dice.randbytes(dice.choice([0, 0, 0, 1, 60]))
        frame = datagram(dice.choice([3000, 3003]), payload, max(0, len(payload) + dice.choice([0, 0, 0, -5, 5, 1000])))
        frames.append((frame[:dice.randrange(14, len(frame))], len(frame)) if dice.random() < 0.2 else frame)
    return frames
