#include "tools/rtrange/outputs/csv_output.hpp"

#include <cstddef>
#include <vector>

#include <fmt/format.h>

namespace rtrange {
namespace {

/// Cells passed to the writer at a time: a few dozen rows, which fit into the processor's cache.
constexpr std::size_t block_cells = 1 << 13;

} // namespace

csv_output::csv_output(const std::filesystem::path& folder, result_rules rules,
                       const table_columns& columns)
    : result_(folder, file_names(), rules), columns_(columns) {}

void csv_output::write(const table_row& row) {
    table_file& target = tables_[row.table] != nullptr ? *tables_[row.table] : open(row.table);
    target.cells.insert(target.cells.end(), row.cells.begin(), row.cells.end());
    ++target.rows;
    if (target.cells.size() >= block_cells)
        writer_.append(target.file, target.cells);
}

void csv_output::close() {
    for (const auto& table : tables_)
        if (table != nullptr)
            writer_.append(table->file, table->cells);
    writer_.finish();
    for (const auto& table : tables_)
        if (table != nullptr)
            table->file.close();
    result_.complete();
}

std::vector<written_table> csv_output::tables() const {
    std::vector<written_table> result;
    for (std::size_t i = 0; i < table_count; ++i)
        if (tables_[i] != nullptr)
            result.push_back({result_.target_of(name_of(i)).string(), tables_[i]->rows,
                              std::string(table_descriptions()[i].name)});
    return result;
}

std::string csv_output::name_of(std::size_t table) {
    return fmt::format("{}.csv", table_descriptions()[table].name);
}

std::vector<std::string> csv_output::file_names() {
    std::vector<std::string> names;
    for (std::size_t table = 0; table < table_count; ++table)
        names.push_back(name_of(table));
    return names;
}

csv_output::table_file& csv_output::open(std::size_t table) {
    tables_[table] = std::make_unique<table_file>(result_.path_of(name_of(table)), columns_[table]);
    return *tables_[table];
}

} // namespace rtrange
