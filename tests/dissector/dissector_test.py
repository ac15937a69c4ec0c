#!/usr/bin/env python3
"""Compares what Wireshark's dissector shows with the tables of `rtrange decode`, packet by packet, and checks what it
says of malformed packets.
usage: dissector_test.py RTRANGE DISSECTOR TSHARK CAPTURE..."""
import csv
import math
import pathlib
import random
import re
import subprocess
import sys
import tempfile
from collections import Counter

import frames

rtrange, dissector, tshark_program = sys.argv[1:4]
captures = sys.argv[4:]
failures = []

# Fields whose column is the negated value. The sender's axes point to the right and down.
NEGATED = {f"ncom.{name}" for name in (
    "accel_y", "accel_z", "rate_y", "rate_z", "velocity_east", "velocity_down", "pitch")}
NEGATED |= {f"rcom.{name}" for name in (
    "range_lateral", "range_rate_lateral", "velocity_lateral", "acceleration_lateral")}
NEGATED |= {f"rcom.lane_d{i}" for i in [*range(29), *range(29, 52, 2)]}
# Fields whose column differs in another way.
CONVERTED = {
    "ncom.heading": lambda degrees: degrees % 360,
    "ncom.utc_offset": abs,
    "ncom.differential_age_exact": math.floor,
}
# Fields whose column has another name.
COLUMNS = {"ncom.differential_age_exact": "differential_age", "rcom.wrapped_ip": "source_ip"}
# Fields without a column, and why.
WIRE_ONLY = {
    "ncom.ncom_status_data": "bytes whose values are columns",
    "rcom.status_data": "bytes whose values are columns",
    "rcom.lane_status_data": "bytes whose values are columns",
    "rcom.wrapped_bytes": "not decoded",
}
# Columns without a field: other units, copies, and what takes more than one packet.
TABLES_ONLY = re.compile(
    r"(source|destination)_(ip|port)|packet_count|level_accel_.|rate_._copy|.*_kmh|.*_scaled|vehicle_velocity_y"
    r"|curvature|unit_value_.*|relative_.*|gps_time_us|(position|velocity)_accuracy_horizontal|rcom_channel_.*"
    r"|lane_d(30|32|34|36|38|40|42|44|46|48|50|52)|ttc_lateral|range_(rate_)?(lateral|longitudinal)")
# The record converts radians with a rounded pi.
ROUNDED_PI = re.compile(r"ncom\.(rate_.|pitch|roll|(heading|pitch|roll)_accuracy|dual_antenna_(heading|pitch).*)")


def fail(message):
    failures.append(message)
    if len(failures) <= 20:
        print("FAILED:", message)


def tshark(*arguments):
    """Its output. Not as root, for whom newer versions load no script."""
    as_nobody = {"user": 65534, "group": 65534, "extra_groups": []} if frames.is_root() else {}
    result = subprocess.run(
        [tshark_program, *arguments, "-X", f"lua_script:{folder}/rt_range.lua"], capture_output=True, text=True,
        env={"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "HOME": str(folder / "home"),
             "WIRESHARK_PLUGIN_DIR": str(folder / "home")}, **as_nobody)
    if result.returncode != 0 or "Lua" in result.stderr or "Lua Error:" in result.stdout:
        fail(f"tshark {' '.join(arguments)[:200]}: {result.stderr}")
        print(*re.findall(".*Lua Error.*", result.stdout)[:5], sep="\n")
    return result.stdout


def dissected(capture, fields, *options):
    """The fields of each frame, as texts by name; empty ones are left out."""
    output = tshark("-r", capture, *options, "-T", "fields", "-E", "separator=/t", "-E", "occurrence=a",
                    *(argument for field in fields for argument in ("-e", field)))
    for line in output.splitlines():
        yield {field: text for field, text in zip(fields, line.split("\t")) if text}


def columns_of_tables():
    """What brings each column of the tables of units and of RCOM."""
    page = subprocess.run([rtrange, "fields", "--markdown"], capture_output=True, text=True, check=True).stdout
    parts = {heading: text for heading, text in re.findall(r"^## (.*?)\n(.*?)(?=^#)", page, re.M | re.S)}
    return [dict(re.findall(r"^\| `(\w+)` \|[^|]*\|[^|]*\| ([^|]*) \|", parts[heading], re.M))
            for heading in ("Tables of units", "Table of RCOM")]


def is_brought(origin, row, ncom_channel):
    """Whether the packet of a row brings what the tables call by `origin`."""
    kind = row["packet"]
    if origin.startswith("NCOM"):
        channel = re.fullmatch(r"NCOM channel (\d+)", origin)
        return "ncom" in kind and (not channel or channel[1] == ncom_channel)
    for name, packet, number in (("extended range", "range", "status_channel"),
                                 ("lane", "lane", "lane_status_channel")):
        channel = re.search(name + r" channel (\d+)", origin)
        if kind == packet and name in origin:
            return not channel or channel[1] == row.get(number, channel[1])
    return False


def equal(field, shown, cell):
    if re.search("ip$|address$", field):
        return shown == cell
    value = int(shown, 0) if re.fullmatch("0x.*", shown) else float(shown)
    expected = float(cell)
    value = -value if field in NEGATED else CONVERTED.get(field, lambda same: same)(value)
    return math.isclose(value, expected, rel_tol=4e-8 if ROUNDED_PI.fullmatch(field) else 1e-13, abs_tol=1e-12)


def is_unknown(field, frame):
    """Whether a value that a packet has is one that stands for no value in the tables."""
    if field.endswith("_mode"):
        return int(frame[field]) > 32
    return field == "ncom.utc_offset" and frame["ncom.utc_offset_valid"] == "0"


def compare_row(frame, row, fields, origins):
    for field in fields:
        column = COLUMNS.get(field, field.split(".")[1])
        if column not in row or not is_brought(origins[column], row, frame.get("ncom.ncom_status_channel")):
            continue
        shown, cell = frame.get(field, ""), row[column]
        if shown and not cell and is_unknown(field, frame):
            continue
        compared[field] += bool(shown)
        if bool(shown) != bool(cell) or (shown and not equal(field, shown, cell)):
            fail(f"{frame['frame.time_epoch']}: {field} is '{shown}', {column} is '{cell}'")


def compare(capture):
    tables = folder / (pathlib.Path(capture).stem + "-tables")
    subprocess.run([rtrange, "decode", capture, "-o", tables], check=True, capture_output=True)
    shown = {frames.nanoseconds(frame["frame.time_epoch"]): frame
             for frame in dissected(capture, ["frame.time_epoch", *script_fields])}
    of_ncom = [field for field in script_fields if field.startswith("ncom.")]
    of_rcom = [field for field in script_fields if field.startswith("rcom.")]
    of_units = [*of_ncom, "rcom.wrapped_ip", "rcom.ttc_longitudinal"]
    rows = 0
    for table in tables.glob("*.csv"):
        if table.stem == "refused":
            continue
        is_rcom = table.stem == "rcom"
        for row in csv.DictReader(table.open()):
            frame = shown[int(row["reference_timestamp"])]
            fields = of_rcom if is_rcom else of_units
            if row["packet"] == "ncom":
                fields = of_ncom
            compare_row(frame, row, fields, rcom_columns if is_rcom else unit_columns)
            rows += 1
    print(f"{capture}: {len(shown)} frames, {rows} rows compared")


def check_coverage():
    for field in script_fields:
        if (field in WIRE_ONLY) == (compared[field] > 0):
            fail(f"{field} was compared {compared[field]} times")
    for columns, protocol in ((unit_columns, "ncom"), (rcom_columns, "rcom")):
        for column in columns:
            names = {f"{protocol}.{column}"} | {field for field, other in COLUMNS.items() if other == column}
            if not names & set(script_fields) and not TABLES_ONLY.fullmatch(column) and column != "ttc_longitudinal":
                fail(f"no field shows the column {column}")


def check_value_names():
    page = subprocess.run([rtrange, "fields", "--markdown"], capture_output=True, text=True, check=True).stdout
    shown_names = tshark("-G", "values")
    for heading, fields in (("Navigation status", ["navigation_status"]),
                            ("Modes", ["position_mode", "velocity_mode", "orientation_mode"])):
        names = set(re.findall(r"^\| (\d+) \| (.*) \|$", page.split(f"## {heading}\n")[1].split("\n#")[0], re.M))
        for field in fields:
            shown = set(re.findall(rf"^V\tncom\.{field}\t(\d+)\t(.*)$", shown_names, re.M))
            if shown != names:
                fail(f"names of {field}: {sorted(shown ^ names)}")


def check_notes():
    """The notes are the expected ones, and on the frames that rtrange refuses."""
    expert = "_ws.expert.message"
    capture = folder / "malformed.pcap"
    cases = frames.malformed()
    frames.write(capture, [frame for frame, _ in cases])
    subprocess.run([rtrange, "decode", capture, "-o", folder / "malformed"], check=True, capture_output=True)
    refused = {int(row["frame"]) for row in csv.DictReader((folder / "malformed" / "refused.csv").open())}
    for number, (shown, (_, expected)) in enumerate(zip(dissected(str(capture), [expert, "frame.len"]), cases), 1):
        if shown.get(expert, "") != expected:
            fail(f"expert note '{shown.get(expert)}' instead of '{expected}'")
        is_refusal = expected and not re.search("checksum|1000 km|Unknown status channel|of type 4", expected)
        if bool(is_refusal) != (number in refused):
            fail(f"rtrange differs from the expert note '{expected}'")


def check_ports():
    capture = folder / "ports.pcap"
    frames.write(capture, [frames.datagram(4000, frames.ncom_packet())])
    for options in ([], ["-o", "ncom.ports:4000-4001"], ["-d", "udp.port==4000,ncom"]):
        shown = next(dissected(str(capture), ["frame.len", "ncom.sync"], *options))
        if ("ncom.sync" in shown) != bool(options):
            fail(f"port 4000 with {options}: {shown}")


def check_damaged_frames(source):
    capture = folder / "damaged.pcap"
    frames.write(capture, frames.damaged(source, random.Random(1), 3000))
    tshark("-r", str(capture), "-V")


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    folder.chmod(0o755)
    (folder / "home").mkdir()
    (folder / "rt_range.lua").write_bytes(pathlib.Path(dissector).read_bytes())
    unit_columns, rcom_columns = columns_of_tables()
    script_fields = re.findall(r"^F\t[^\t]*\t((?:ncom|rcom)\.\w+)\t(?!FT_NONE)", tshark("-G", "fields"), re.M)
    compared = Counter()
    simulated = folder / "simulated.pcap"
    subprocess.run([rtrange, "simulate", simulated, "--duration", "2", "--targets", "4"], check=True,
                   capture_output=True)
    varied = folder / "varied.pcap"
    frames.write(varied, frames.varied(simulated, random.Random(1)))
    for capture in [*captures, str(simulated), str(varied)]:
        copy = folder / pathlib.Path(capture).name
        copy.write_bytes(pathlib.Path(capture).read_bytes())
        compare(str(copy))
    check_coverage()
    check_value_names()
    check_notes()
    check_ports()
    check_damaged_frames(simulated)
    print(f"{len(script_fields)} fields, {sum(compared.values())} values compared, {len(failures)} failures")
sys.exit(1 if failures else 0)
