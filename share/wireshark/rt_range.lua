-- Wireshark dissector of RT-Range traffic: NCOM of structure A; RCOM extended range, lane and wrapped NCOM packets.
-- For Wireshark 4.0 and later.
--
-- Packets are shown as they stand on the wire, scaled. Fields have the names of the columns of `rtrange decode`:
-- ncom.latitude, rcom.range_lateral. Values keep the signs and axes of the sender: x forward, y to the right, z down.
-- docs/rtrange.md lists the columns that differ.

local ncom = Proto("ncom", "NCOM navigation packet")
local rcom = Proto("rcom", "RCOM packet")

-- Names of values.
local statuses = {[0] = "invalid", "raw IMU measurements", "initialising", "locking", "locked", [10] = "status only",
  [11] = "internal use", [20] = "trigger packet", [21] = "trigger packet", [22] = "trigger packet"}
local modes = {[0] = "none", "search", "Doppler", "SPS", "differential", "RTK float", "RTK integer", "SBAS",
  "OmniSTAR VBS", "OmniSTAR HP", "no data", "blanked", "Doppler, post-processed", "SPS, post-processed",
  "differential, post-processed", "RTK float, post-processed", "RTK integer, post-processed", "OmniSTAR XP", "CDGPS",
  "not recognised", "Doppler (20)", "SPS (21)", "differential (22)", "RTK float (23)", "RTK integer (24)",
  "Doppler (25)", "SPS (26)", "differential (27)", "RTK float (28)", "RTK integer (29)", "PPP converging", "PPP",
  "unknown"}
local vehicles = {[0] = "hunter", "target 1", "target 2", "target 3", "target 4"}
local packet_types = {"lane", "extended range", "wrapped NCOM"}

-- Kinds of fields: size in bytes, how they are read, type of the filter field unless a scaled one is a double; `none`
-- stands for no value.
local kinds = {
  u8 = {1, "le_uint", "uint8"}, u16 = {2, "le_uint", "uint16"}, u24 = {3, "le_uint", "uint24"},
  u32 = {4, "le_uint", "uint32"}, s16 = {2, "le_int", "int16"}, s24 = {3, "le_int", "int24"},
  s32 = {4, "le_int", "int32"}, f32 = {4, "le_float", "double"}, f64 = {8, "le_float", "double"},
  ip = {4, nil, "ipv4"}, bytes12 = {12, nil, "bytes"}, hex = {1, "le_uint", "uint8", base = base.HEX},
  count = {1, "le_uint", "uint8", none = 255}, mode = {1, "le_uint", "uint8", names = modes},
  status = {1, "le_uint", "uint8", names = statuses}, vehicle = {1, "le_uint", "uint8", names = vehicles},
  type = {1, "le_uint", "uint8", names = packet_types}, word = {2, "le_uint", "uint16", none = 65535},
  upper7 = {1, function(byte) return math.floor(byte:le_int() / 2) end, "int8"},
  lowest1 = {1, function(byte) return byte:le_uint() % 2 end, "uint8"},
  channel = {1, "le_uint", "uint8"},
}

-- Titles of fields whose name does not say enough.
local titles = {sync = "Sync byte", time_in_minute_ms = "Time in the GPS minute",
  packet_length = "Packet length as stated", rate_x = "Rate about the forward axis",
  rate_y = "Rate about the axis to the right", rate_z = "Rate about the downward axis", pitch = "Pitch, nose up",
  roll = "Roll, right side down", ncom_status_channel = "Status channel", gps_minutes = "Minutes since the GPS epoch",
  utc_offset = "UTC minus GPS time", utc_offset_valid = "UTC offset is valid",
  differential_age_exact = "Age of the differential corrections", wrapped_ip = "Address of the unit",
  wrapped_bytes = "Not interpreted", vehicle_velocity_x = "Velocity forward",
  ttc_longitudinal = "Longitudinal time to collision"}

local function title_of(name)
  local title = titles[name] or name:gsub("^accel_", "acceleration_"):gsub("_x$", " forward")
    :gsub("_y$", " to the right"):gsub("_z$", " down"):gsub("^(.*)_lateral$", "lateral %1, to the right")
    :gsub("^(.*)_longitudinal$", "longitudinal %1"):gsub("_", " ")
  return title:sub(1, 1):upper() .. title:sub(2)
end

-- The fields of a packet, from a text: kind, name, unit and divisor of each field, in the order on the wire. '-' is no
-- unit; a divisor with 'rad' makes degrees of radians; '(a|b)' stands for two fields, '(5..12)' for eight,
-- '(33..47+2)' for every second number; a number alone skips as many bytes, or goes back. The eight data bytes of
-- a status channel follow its number.
local function layout(text, channels)
  local fields, offset = {}, 0
  local function append(kind, name, unit, divisor)
    local number, rad = divisor:match("([%de]+)(r?)")
    local scale = number and tonumber(number) * (rad == "r" and math.pi / 180 or 1)
    table.insert(fields, {kind = kinds[kind], name = name, offset = offset, unit = unit:match("^[^-].*"), scale = scale,
      title = title_of(name), channels = kind == "channel" and channels})
    offset = offset + kinds[kind][1] + (kind == "channel" and 8 or 0)
  end
  for item in text:gmatch("[^,\n]+") do
    local kind, name, unit, divisor = item:match("(%S+) ?(%S*) ?(%S*) ?(%S*)")
    local stem, parts, ending = name:match("^(.-)%((.*)%)(.*)$")
    local first, last, step = (parts or ""):match("^(%d+)%.%.(%d+)%+?(%d*)$")
    if tonumber(kind) then
      offset = offset + tonumber(kind)
    elseif first then
      for i = tonumber(first), tonumber(last), tonumber(step) or 1 do
        append(kind, string.format("%s%d", stem, i), unit, divisor)
      end
    elseif parts then
      for part in parts:gmatch("[^|]+") do append(kind, stem .. part .. ending, unit, divisor) end
    else
      append(kind, name, unit, divisor)
    end
  end
  return fields
end
local function channel(name, text) return {name = name, fields = layout(text)} end
local function unknown(text) return channel("not interpreted", text) end

local ncom_channels = {
  [0] = channel("time, satellites and modes",
    "s32 gps_minutes min, count satellites, mode (position|velocity|orientation)_mode"),
  [2] = channel("primary receiver", "u16 primary_receiver_(characters|packets|characters_skipped|packets_skipped)"),
  [3] = channel("position accuracy",
    "u16 position_accuracy_(north|east|down) m 1000, count position_accuracy_age, u8 channel_3_byte_7"),
  [4] = channel("velocity accuracy",
    "s16 velocity_accuracy_(north|east|down) m/s 1000, count velocity_accuracy_age, u8 channel_4_byte_7"),
  [5] = channel("orientation accuracy",
    "u16 (heading|pitch|roll)_accuracy deg 1e5rad, count orientation_accuracy_age"),
  [12] = channel("primary antenna", "s16 primary_antenna_(x|y|z) m 1000, count primary_antenna_age"),
  [13] = channel("dual antenna",
    "s16 dual_antenna_(heading|pitch) deg 1e4rad, s16 dual_antenna_distance m 1000, count dual_antenna_age"),
  [14] = channel("primary antenna accuracy",
    "u16 primary_antenna_accuracy_(x|y|z) m 1e4, count primary_antenna_accuracy_age"),
  [15] = channel("dual antenna accuracy", "u16 dual_antenna_(heading|pitch)_accuracy deg 1e4rad, " ..
    "u16 dual_antenna_distance_accuracy m 1000, count dual_antenna_accuracy_age"),
  [16] = channel("UTC offset", "7, upper7 utc_offset s, -1, lowest1 utc_offset_valid"),
  [20] = channel("differential age", "u16 differential_age_exact s 100"),
  [26] = channel("output displacement", "s16 output_displacement_(x|y|z) m 1000, count output_displacement_age"),
  [75] = unknown("u16 channel_75_word_0, u8 channel_75_byte_2"),
  [76] = unknown("u16 channel_76_word_(0..4+2)"),
  [77] = unknown("u8 channel_77_byte_(0..2)"),
}
local ncom_fields = layout([[
  hex sync, u16 time_in_minute_ms ms, s24 accel_(x|y|z) m/s² 1e4, s24 rate_(x|y|z) deg/s 1e5rad
  status navigation_status, hex checksum_1, f64 (latitude|longitude) deg 1rad, f32 altitude m
  s24 velocity_(north|east|down) m/s 1e4, s24 (heading|pitch|roll) deg 1e6rad, hex checksum_2
  channel ncom_status_channel, hex checksum_3]], ncom_channels)

local range_channels = {
  [0] = unknown("s32 channel_0_value, u8 channel_0_byte_(4..5), word channel_0_scaled - 1000"),
  [1] = unknown("u8 channel_1_byte_(0..7)"),
  [2] = unknown("u16 channel_2_word_(0..4+2)"),
  [3] = unknown("u16 channel_3_word_(0..4+2)"),
  [4] = unknown("u16 channel_4_word_(0..4+2)"),
  [5] = unknown("word channel_5_scaled - 1000"),
  [6] = unknown("u8 channel_6_byte_(0..2), u24 channel_6_value"),
  [7] = unknown("s16 channel_7_word_0, 1, u8 channel_7_byte_3, u16 channel_7_word_4, u8 channel_7_byte_6"),
  [8] = channel("position of the target", "s32 target_(latitude|longitude) deg 1e7"),
  [9] = channel("addresses", "ip (hunter|target)_address"),
  [10] = channel("altitude and heading of the target", "s32 target_altitude m 1000, u32 target_heading deg 1e7"),
  [11] = unknown("s32 channel_11_(a|b) - 1e7"),
  [12] = unknown("s32 channel_12_a - 1000, s32 channel_12_b - 1e7"),
  [13] = unknown("s24 channel_13_(a|b) - 1000, s16 channel_13_c - 1000"),
  [14] = unknown("s24 channel_14_(a|b) - 1000, s16 channel_14_c - 1000"),
  [15] = unknown("u16 channel_15_word_(0..6+2)"),
  [16] = unknown("u16 channel_16_(a|b|c|d) - 1000"),
  [17] = unknown("u16 channel_17_(a|b) - 1000, u16 channel_17_c"),
  [18] = unknown("f32 channel_18_(a|b)"),
  [19] = unknown("f32 channel_19_(a|b)"),
  [20] = unknown("s32 channel_20_(a|b) - 1e7"),
  [21] = unknown("s32 channel_21_a - 1000, s32 channel_21_b - 1e7"),
}
local range_fields = layout([[
  4, u16 ext_range_word_4, vehicle target_number, u8 ext_range_byte_7, s32 range_(lateral|longitudinal) m 1000
  s16 range_rate_(lateral|longitudinal) m/s 100, s32 hunter_value_(a|b) - 1000, s32 target_value_(a|b) - 1000
  u16 (hunter|target)_value_c - 100, u8 ext_range_byte_40, channel status_channel
  s16 velocity_(longitudinal|lateral) m/s 100, s16 acceleration_(lateral|longitudinal) m/s² 100
  u8 ext_range_byte_(58..61), u16 ext_range_word_62, u8 ext_range_byte_64]], range_channels)

local lane_channels = {
  [0] = unknown("s32 lane_channel_0_(a|b)"),
  [1] = unknown("u8 lane_channel_1_byte_(0..7)"),
  [2] = unknown("u8 lane_channel_2_byte_0, u32 lane_channel_2_value"),
  [6] = unknown("u8 lane_channel_6_byte_(0..2), u24 lane_channel_6_value, s16 lane_channel_6_word_6"),
  [7] = unknown("s16 lane_channel_7_word_0, s32 lane_channel_7_value"),
  [8] = unknown("s24 lane_channel_8_(a|b) - 1000, s16 lane_channel_8_c - 1000"),
  [9] = unknown("s24 lane_channel_9_(a|b) - 1000, s16 lane_channel_9_c - 1000"),
  [10] = unknown("s24 lane_channel_10_(a|b) - 1000, s16 lane_channel_10_c - 1000"),
  [15] = unknown("u16 lane_channel_15_word_(0..6+2)"),
}
local lane_fields = layout([[
  4, u16 lane_word_4, u8 lane_byte_(6..7), s32 lane_d0 - 1000, s16 lane_d1 - 1000, s16 lane_d29 - 100
  s16 lane_d49 - 10, s16 lane_d2 - 1000, s16 lane_d31 - 100, s16 lane_d51 - 10, s16 lane_d(5..12) - 1000
  s16 lane_d(3..4) - 1000, u8 lane_byte_(44..48), channel lane_status_channel, s16 lane_d(33..47+2) - 100
  s16 lane_d(13..28) - 1000, s16 lane_d(53..63) - 1e4, s16 lane_d(64..65) - 100, u8 lane_byte_132]], lane_channels)

local header_fields = layout("hex sync, type packet_type, u16 packet_length bytes")
local wrapped_fields = layout("4, ip wrapped_ip, bytes12 wrapped_bytes")
local ncom_computed = layout("f64 vehicle_velocity_x m/s, u8 checksum_error")
local range_computed = layout("f64 ttc_longitudinal s")

-- Packets with the number of bytes that they need, and the smallest length that the sender may state.
local ncom_packet = {name = "NCOM packet", size = 72}
local rcom_header = {name = "RCOM header", size = 4}
local rcom_packets = {
  {name = "RCOM lane packet", size = 133, stated = 129, fields = lane_fields},
  {name = "RCOM extended range packet", size = 65, stated = 61, fields = range_fields},
  {name = "RCOM wrapped NCOM packet", size = 92, stated = 0, fields = wrapped_fields},
}

-- Creates the filter fields and the expert notes of a protocol.
local function declare(proto, prefix, tables)
  local filters = {}
  local function filter(type, name, ...)
    table.insert(filters, ProtoField[type](prefix .. "." .. name, ...))
    return filters[#filters]
  end
  local function declare_fields(fields)
    for _, field in ipairs(fields) do
      local type, names = field.scale and "double" or field.kind[3], field.kind.names
      if field.channels then
        names = {}
        for number, channel in pairs(field.channels) do
          names[number] = channel.name
          declare_fields(channel.fields)
        end
        field.data = filter("bytes", field.name:gsub("channel$", "data"), "Status data")
      end
      if type:find("int") then
        field.filter = filter(type, field.name, field.title, field.kind.base or base.DEC, names)
      else
        field.filter = filter(type, field.name, field.title)
      end
    end
  end
  for _, fields in ipairs(tables) do declare_fields(fields) end
  proto.fields = filters
  local malformed = ProtoExpert.new(prefix .. ".malformed", "Malformed", expert.group.MALFORMED, expert.severity.ERROR)
  local doubtful = ProtoExpert.new(prefix .. ".doubtful", "Doubtful", expert.group.PROTOCOL, expert.severity.WARN)
  proto.experts = {malformed, doubtful}
  return malformed, doubtful
end
local ncom_malformed, ncom_doubtful = declare(ncom, "ncom", {ncom_fields, ncom_computed})
local rcom_malformed, rcom_doubtful = declare(rcom, "rcom",
  {header_fields, range_fields, lane_fields, wrapped_fields, range_computed})

local function add(tree, field, range, value)
  local item = value and tree:add(field.filter, range, value) or tree:add(field.filter, range)
  if field.unit then item:append_text(" " .. field.unit) end
  return item
end

local function add_fields(tree, data, fields, start)
  for _, field in ipairs(fields) do
    local size, method = field.kind[1], field.kind[2]
    local offset = (start or 0) + field.offset
    local range = data(offset, size)
    local value = method and (type(method) == "string" and range[method] or method)(range)
    if value and value == field.kind.none then
      tree:add(range, field.title .. ": no value")
    else
      add(tree, field, range, field.scale and value / field.scale or value)
    end
    if field.channels then
      local subtree, channel = tree:add(field.data, data(offset + size, 8)), field.channels[value]
      if channel then add_fields(subtree, data, channel.fields, offset + size) end
    end
  end
end

-- Adds an expert note, and shows it in the packet list. Returns its text.
local function note(tree, pinfo, kind, ...)
  local text = string.format(...)
  tree:add_proto_expert_info(kind, text)
  pinfo.cols.info = text
  return text
end

-- Returns a note if there are fewer bytes than a packet has.
local function too_short(tree, pinfo, kind, data, packet)
  local received = data:captured_len()
  if received >= packet.size then return end
  return note(tree, pinfo, kind, "%s: expected at least %d bytes, received %d%s", packet.name, packet.size, received,
    data:reported_len() > received and " (cut short when recorded)" or "")
end

local function channel_text(channels, number)
  return string.format("status channel %d: %s", number, channels[number] and channels[number].name or "unknown")
end

-- Senders sum either all bytes from the sync byte up to each checksum, or those from the previous checksum on.
local function has_checksums(data, second_start, third_start)
  local function is_right(first, checksum)
    local sum = 0
    for i = first, checksum - 1 do sum = sum + data(i, 1):uint() end
    return sum % 256 == data(checksum, 1):uint()
  end
  return is_right(1, 22) and is_right(second_start, 61) and is_right(third_start, 71)
end

-- Returns a summary of the packet.
local function dissect_ncom(data, pinfo, root)
  local tree = root:add(ncom, data())
  local refusal = too_short(tree, pinfo, ncom_malformed, data, ncom_packet)
  if refusal then return refusal end
  local sync, status, channel = data(0, 1):uint(), data(21, 1):uint(), data(62, 1):uint()
  if status == 11 then return note(tree, pinfo, ncom_doubtful, "NCOM of structure B is not decoded") end
  if sync ~= 0xE7 then
    return note(tree, pinfo, ncom_malformed, "Not NCOM: expected the sync byte 0xe7, received 0x%02x", sync)
  end
  add_fields(tree, data, ncom_fields)
  local north, east, heading = data(43, 3):le_int() / 1e4, data(46, 3):le_int() / 1e4, data(52, 3):le_int() / 1e6
  local is_right = has_checksums(data, 1, 1) or has_checksums(data, 22, 61)
  add(tree, ncom_computed[1], data(43, 12), north * math.cos(heading) + east * math.sin(heading)):set_generated()
  add(tree, ncom_computed[2], data(), is_right and 0 or 1):set_generated()
  if not is_right then return note(tree, pinfo, ncom_doubtful, "NCOM with a wrong checksum") end
  local summary = string.format("NCOM, %s, %s", statuses[status] or "unknown status",
    channel_text(ncom_channels, channel))
  pinfo.cols.info = summary
  return summary
end

function ncom.dissector(data, pinfo, root)
  pinfo.cols.protocol = "NCOM"
  dissect_ncom(data, pinfo, root)
  return data:len()
end

local function add_range(tree, data, pinfo)
  add_fields(tree, data, range_fields)
  local target, channel = data(6, 1):uint(), data(41, 1):uint()
  local range, rate = data(12, 4):le_int() / 1000, data(18, 2):le_int() / 100
  if range * rate < 0 and math.abs(rate) > 0.1 then
    add(tree, range_computed[1], data(12, 8), -range / rate):set_generated()
  end
  pinfo.cols.info = string.format("RCOM extended range, %s, %.3f m, %s", vehicles[target] or "no target", range,
    channel_text(range_channels, channel))
  if target > 4 then note(tree, pinfo, rcom_doubtful, "Target number %d: expected 0 to 4", target) end
  if math.abs(range) > 1e6 then note(tree, pinfo, rcom_doubtful, "Longitudinal range above 1000 km") end
  if not range_channels[channel] then note(tree, pinfo, rcom_doubtful, "Unknown status channel %d", channel) end
end

function rcom.dissector(data, pinfo, root)
  pinfo.cols.protocol = "RCOM"
  local tree = root:add(rcom, data())
  if too_short(tree, pinfo, rcom_malformed, data, rcom_header) then return data:len() end
  local sync, type, stated = data(0, 1):uint(), data(1, 1):uint(), data(2, 2):le_uint()
  if sync ~= 0x57 then
    note(tree, pinfo, rcom_malformed, "Not RCOM: expected the sync byte 0x57, received 0x%02x", sync)
    return data:len()
  end
  add_fields(tree, data, header_fields)
  local packet = rcom_packets[type]
  if not packet then
    note(tree, pinfo, rcom_doubtful, "RCOM packet of type %d is not decoded", type)
  elseif stated < packet.stated then
    note(tree, pinfo, rcom_malformed, "%s: expected a stated length of at least %d bytes, received %d", packet.name,
      packet.stated, stated)
  elseif too_short(tree, pinfo, rcom_malformed, data, packet) then
    return data:len()
  elseif type == 2 then
    add_range(tree, data, pinfo)
  else
    add_fields(tree, data, packet.fields)
    pinfo.cols.info = type == 1 and "RCOM lane, " .. channel_text(lane_channels, data(49, 1):uint()) or
      string.format("RCOM of %s: %s", data(4, 4):ipv4(), dissect_ncom(data(20):tvb(), pinfo, root))
  end
  return data:len()
end

-- Listens on UDP ports, which are a preference.
for proto, default in pairs({[ncom] = "3000", [rcom] = "3003"}) do
  local udp, ports = DissectorTable.get("udp.port"), default
  proto.prefs.ports = Pref.range("UDP ports", default, "Ports of " .. proto.name .. " datagrams", 65535)
  udp:add(ports, proto)
  function proto.prefs_changed()
    if ports == proto.prefs.ports then return end
    udp:remove(ports, proto)
    ports = proto.prefs.ports
    udp:add(ports, proto)
  end
end
