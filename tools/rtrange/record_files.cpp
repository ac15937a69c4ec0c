#include "tools/rtrange/record_files.hpp"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "zel_rt_range_formatter/fields/ncom_fields.hpp"
#include "zel_rt_range_formatter/src/ncom_unit_record.hpp"
#include "zel_rt_range_formatter/src/units.hpp"

namespace rtrange {

using namespace zel::toolbox::rt_range;

namespace {

/// The table of a unit's packets, then the table of its samples, for each unit.
constexpr std::array<std::string_view, 2 * unit_count> table_names{
    "hunter.csv",  "hunter_samples.csv",  "target1.csv", "target1_samples.csv",
    "target2.csv", "target2_samples.csv", "target3.csv", "target3_samples.csv",
    "target4.csv", "target4_samples.csv"};

constexpr std::string_view leading_columns[] = {"reference_timestamp"};

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
    std::size_t count = 0;
    for (std::size_t i = 0; i < packages.size(); ++i) {
        const auto package = decoded(packages[i]);
        if (!package)
            continue;
        ++count;
        const auto unit = unit_with_tag(package->tag);
        if (!unit || package->record.size() != sizeof(ncom_unit_record))
            continue;
        // The packages of a sample batch stand before the one of the packet that completed it.
        const bool sample = i + 1 < packages.size();
        csv_file& file = table(2 * *unit + (sample ? 1 : 0));
        file.cell(packages[i].reference_timestamp);
        file.end_row(package->record);
    }
    return count;
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
    if (tables_[index] == nullptr)
        tables_[index] = std::make_unique<csv_file>(folder_ / table_names[index], leading_columns,
                                                    ncom_fields());
    return *tables_[index];
}

} // namespace rtrange
