#include "tools/rtrange/record_files.hpp"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "zel_rt_range_formatter/fields/ncom_fields.hpp"
#include "zel_rt_range_formatter/fields/rcom_fields.hpp"
#include "zel_rt_range_formatter/src/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/src/rcom_unit_record.hpp"
#include "zel_rt_range_formatter/src/units.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

/// The table of a unit's packets, then the table of its samples, for each unit; then RCOM.
constexpr std::array<std::string_view, 2 * unit_count + 1> table_names{
    "hunter.csv",  "hunter_samples.csv",  "target1.csv", "target1_samples.csv",
    "target2.csv", "target2_samples.csv", "target3.csv", "target3_samples.csv",
    "target4.csv", "target4_samples.csv", "rcom.csv"};
constexpr std::size_t rcom_table = 2 * unit_count;

/// The second column tells whether a unit's row comes from an NCOM packet of its own or from RCOM:
/// an extended range packet, or NCOM wrapped in RCOM.
constexpr std::string_view unit_columns[] = {"reference_timestamp", "source"};
constexpr std::string_view rcom_columns[] = {"reference_timestamp"};

struct decoded_package {
    std::uint32_t tag;
    std::span<const std::uint8_t> record;
};

/// A decoded package's tag and record; nothing for a bare Ethernet frame.
std::optional<decoded_package> decoded(const zel_package_t& package) {
    const auto data = zel::host::data(package);
    decoded_package result{};
    if (zel::host::format_type(package) != "zel.rtrange" || data.size() < sizeof(result.tag))
        return std::nullopt;
    std::memcpy(&result.tag, data.data(), sizeof(result.tag));
    result.record = data.subspan(sizeof(result.tag));
    return result;
}

void require_size(std::span<const std::uint8_t> record, std::size_t size) {
    if (record.size() != size)
        throw failure(fmt::format("the plug-in gave a record of {} bytes instead of {}; use the "
                                  "plug-in that belongs to this program",
                                  record.size(), size));
}

/// Index of the unit whose NCOM record has this tag.
std::optional<std::size_t> unit_with_tag(std::uint32_t tag) {
    const auto found = std::ranges::find(ncom_record_tags, tag);
    if (found == ncom_record_tags.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - ncom_record_tags.begin());
}

} // namespace

record_files::record_files(const std::filesystem::path& folder) : folder_(folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw failure(
            fmt::format("cannot create the folder '{}': {}", folder.string(), error.message()));
}

std::size_t record_files::write(const zel::host::package_array& packages) {
    const bool from_rcom = std::ranges::any_of(packages, [](const zel_package_t* package) {
        const auto content = decoded(*package);
        return content && content->tag == rcom_record_tag;
    });
    std::size_t count = 0;
    for (std::size_t i = 0; i < packages.size(); ++i) {
        const auto package = decoded(packages[i]);
        if (!package)
            continue;
        ++count;
        const std::uint64_t timestamp = packages[i].reference_timestamp;
        if (package->tag == rcom_record_tag)
            write_rcom(timestamp, package->record);
        else if (const auto unit = unit_with_tag(package->tag))
            // The packages of a sample batch stand before the one of the packet that completed it.
            write_unit(2 * *unit + (i + 1 < packages.size() ? 1 : 0), timestamp, from_rcom,
                       package->record);
    }
    return count;
}

void record_files::write_rcom(std::uint64_t timestamp, std::span<const std::uint8_t> record) {
    require_size(record, sizeof(rcom_unit_record));
    csv_file& file = table(rcom_table);
    file.cell(timestamp);
    file.end_row(record);
}

void record_files::write_unit(std::size_t index, std::uint64_t timestamp, bool from_rcom,
                              std::span<const std::uint8_t> record) {
    require_size(record, sizeof(ncom_unit_record));
    csv_file& file = table(index);
    file.cell(timestamp);
    file.cell(from_rcom ? std::string_view("rcom") : std::string_view("ncom"));
    file.end_row(record);
}

void record_files::close() {
    for (std::size_t i = 0; i < table_count; ++i) {
        if (tables_[i] != nullptr) {
            tables_[i]->close();
            continue;
        }
        std::error_code error;
        std::filesystem::remove(folder_ / table_names[i], error);
        if (error)
            throw failure(fmt::format("cannot remove '{}' of an earlier run: {}",
                                      (folder_ / table_names[i]).string(), error.message()));
    }
}

std::vector<const csv_file*> record_files::tables() const {
    std::vector<const csv_file*> result;
    for (const auto& table : tables_)
        if (table != nullptr)
            result.push_back(table.get());
    return result;
}

csv_file& record_files::table(std::size_t index) {
    auto& table = tables_[index];
    if (table != nullptr)
        return *table;
    const std::filesystem::path file = folder_ / table_names[index];
    if (index == rcom_table)
        table = std::make_unique<csv_file>(file, rcom_columns, rcom_fields());
    else
        table = std::make_unique<csv_file>(file, unit_columns, ncom_fields());
    return *table;
}

} // namespace rtrange
