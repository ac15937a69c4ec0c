#include "tools/rtrange/frame_decoder.hpp"

#include <cmath>
#include <cstring>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/plugin_file.hpp"
#include "tools/rtrange/tables/measured_view.hpp"
#include "tools/rtrange/tables/record_view.hpp"

namespace rtrange {
namespace {

/// Of the view "measured". After a longer gap, earlier values are outdated.
constexpr double default_restart_gap_s = 5.0;

bool shows_records(const run_options& options) {
    return options.view == "record";
}

std::unique_ptr<table_view> create_view(const run_options& options, const selection& selected) {
    if (shows_records(options))
        return std::make_unique<record_view>(selected);
    return std::make_unique<measured_view>(selected, options.samples);
}

/// The view "record" compares with recordings, so it restarts only when that is asked for.
std::uint64_t restart_gap_ns(const run_options& options) {
    const double seconds =
        options.restart_gap_s.value_or(shows_records(options) ? 0.0 : default_restart_gap_s);
    return seconds > 0.0 ? static_cast<std::uint64_t>(std::llround(seconds * 1e9)) : UINT64_MAX;
}

/// Throws usage_failure when a selected field is in none of the tables.
void check_fields(const run_options& options, const table_columns& columns) {
    for (const std::string& name : options.selection.fields) {
        const bool found = std::ranges::any_of(columns, [&](const std::vector<column>& table) {
            return std::ranges::any_of(table,
                                       [&](const column& entry) { return entry.name == name; });
        });
        if (!found)
            throw usage_failure(
                fmt::format("there is no field '{}' in the selected tables of the view '{}'; see "
                            "'rtrange fields{}'",
                            name, options.view, shows_records(options) ? " --view record" : ""));
    }
}

/// An IPv4 address in wire byte order, if the frame is long enough.
cell address_at(const captured_frame& frame, std::size_t offset) {
    std::uint32_t address = 0;
    if (frame.bytes.size() < offset + sizeof(address))
        return unknown_address;
    std::memcpy(&address, frame.bytes.data() + offset, sizeof(address));
    return address;
}

} // namespace

const std::vector<column>& refused_columns() {
    static const std::vector<column> columns{
        {"frame", cell_type::u64, "", "number of the frame in its capture, from 1"},
        {"reference_timestamp", cell_type::u64, "ns", "capture time since 1970"},
        {"time_s", cell_type::f64, "s", "capture time since the first frame of the run"},
        {"source_ip", cell_type::address, "", "IPv4 source address"},
        {"destination_ip", cell_type::address, "", "IPv4 destination address"},
        {"reason", cell_type::text, "", "why the frame was refused", longest_text},
        {"capture", cell_type::text, "", "name of the capture", longest_text},
    };
    return columns;
}

frame_decoder::frame_decoder(const run_options& options)
    : selected_(options.selection), view_(create_view(options, selected_)),
      columns_(view_->columns()), restart_gap_ns_(rtrange::restart_gap_ns(options)),
      plugin_(options.plugin.empty() ? default_plugin_file() : options.plugin),
      services_([this](const zel_log_info_t& record) { outcomes_.log(record); }),
      formatter_(plugin_.formatter(options.format)),
      wrap_(options.format == zel::host::recorder_frame_type ? &zel::host::wrap_recorder_frame
                                                             : &zel::host::wrap_ethernet_frame) {
    check_fields(options, columns_);
    if (!shows_records(options))
        columns_[refused_table] = refused_columns();
    start_instance();
}

void frame_decoder::start_instance() {
    instance_.reset();
    instance_.emplace(formatter_, services_);
}

void frame_decoder::decode(const captured_frame& frame, table_output& output) {
    if (outcomes_.frames == 0) {
        zero_ns_ = frame.time_ns;
        selected_.set_start(zero_ns_);
    }
    outcomes_.begin_frame(frame);
    restart_after_gap();
    wrap_(frame.bytes, raw_package_);
    raw_package_.package().reference_timestamp = frame.time_ns;
    const auto packages = instance_->transform(raw_package_.package());
    sort_packages(packages, packages_);
    const auto packet = packages_.empty() ? std::nullopt : packet_in(frame.bytes);
    const frame_outcome outcome = outcomes_.end_frame(frame, packet);
    if (packet) {
        const decoded_frame decoded{frame.time_ns, zero_ns_, *packet, packages_,
                                    outcomes_.addresses()};
        if (packages_.rcom)
            tables_with_rows_.set(rcom_table);
        if (const auto table = view_->unit_table(decoded))
            tables_with_rows_.set(*table);
        rows_.clear();
        view_->add_rows(decoded, rows_);
        if (!selected_.contains(frame.time_ns))
            return;
        for (const table_row& row : rows_)
            output.write(row);
        written_rows_ += rows_.size();
    } else if (outcome == frame_outcome::refused) {
        write_refused(frame, output);
    }
}

void frame_decoder::restart_after_gap() {
    if (outcomes_.gap_ns() > restart_gap_ns_) {
        outcomes_.restart();
        start_instance();
        view_->restart();
    } else if (outcomes_.is_step_back()) {
        view_->restart(); // the plug-in resets itself
    }
}

void frame_decoder::write_refused(const captured_frame& frame, table_output& output) {
    if (columns_[refused_table].empty() || !selected_.contains(frame.time_ns))
        return;
    constexpr std::size_t source_address = 26;
    constexpr std::size_t destination_address = 30;
    const auto since_zero = static_cast<std::int64_t>(frame.time_ns - zero_ns_);
    const std::array<cell, 7> cells{frame.number,
                                    frame.time_ns,
                                    cell_of(static_cast<double>(since_zero) / 1e9),
                                    address_at(frame, source_address),
                                    address_at(frame, destination_address),
                                    cell_of(outcomes_.refusal()),
                                    cell_of(frame.capture)};
    output.write({refused_table, frame.time_ns, packet_kind::ncom, cells});
}

} // namespace rtrange
