#include "tools/rtrange/frame_decoder.hpp"

#include "tools/rtrange/plugin_file.hpp"

namespace rtrange {

frame_decoder::frame_decoder(const run_options& options)
    : selected_(options.selection),
      plugin_(options.plugin.empty() ? default_plugin_file() : options.plugin),
      services_([this](const zel_log_info_t& record) { outcomes_.log(record); }),
      instance_(plugin_.formatter(options.format), services_),
      wrap_(options.format == zel::host::recorder_frame_type ? &zel::host::wrap_recorder_frame
                                                             : &zel::host::wrap_ethernet_frame) {}

void frame_decoder::decode(const captured_frame& frame, record_output& output) {
    if (outcomes_.frames == 0)
        selected_.set_start(frame.time_ns);
    outcomes_.begin_frame(frame);
    wrap_(frame.bytes, raw_package_);
    raw_package_.package().reference_timestamp = frame.time_ns;
    const auto packages = instance_.transform(raw_package_.package());
    rows_of(packages, rows_);
    for (const record_row& row : rows_) {
        tables_with_rows_.set(row.table);
        if (selected_.contains(row))
            output.write(row);
    }
    outcomes_.end_frame(frame, rows_.size());
}

} // namespace rtrange
