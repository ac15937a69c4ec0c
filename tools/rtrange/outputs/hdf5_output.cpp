#include "tools/rtrange/outputs/hdf5_output.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <fmt/format.h>

#include "tools/rtrange/failure.hpp"
#include "tools/rtrange/outputs/mat_file.hpp"
#include "tools/rtrange/platform.hpp"
#include "version.hpp"

namespace rtrange {
namespace {

/// Creates the file without the library first, because the library does not report why it cannot.
void check_writable(const std::filesystem::path& file) {
    std::FILE* const stream = open_for_writing(file);
    if (stream == nullptr)
        throw failure(fmt::format("cannot write '{}': {}", file.string(), std::strerror(errno)));
    std::fclose(stream);
}

/// Limits the library's cache of dataset indexes, so that memory does not grow with the run: in
/// memory, entries are several times as large as in the file, where the limit counts.
hdf5_handle bounded_metadata_cache() {
    constexpr std::size_t size = 1 << 20;
    hdf5_handle access(H5Pcreate(H5P_FILE_ACCESS), "creating the file");
    H5AC_cache_config_t config{};
    config.version = H5AC__CURR_CACHE_CONFIG_VERSION;
    check_hdf5(H5Pget_mdc_config(access, &config), "creating the file");
    config.set_initial_size = true;
    config.initial_size = size;
    config.min_size = size;
    config.max_size = size;
    check_hdf5(H5Pset_mdc_config(access, &config), "creating the file");
    return access;
}

/// A file has hundreds of datasets, each with an index of its chunks. With the library's default
/// sizes, the file of a short run would consist mostly of empty indexes.
hdf5_handle small_indexes(std::size_t block_size) {
    constexpr unsigned half_of_the_chunks_per_node = 16;
    hdf5_handle creation(H5Pcreate(H5P_FILE_CREATE), "creating the file");
    check_hdf5(H5Pset_istore_k(creation, half_of_the_chunks_per_node), "creating the file");
    check_hdf5(H5Pset_userblock(creation, block_size), "creating the file");
    return creation;
}

/// Creates a file whose data begins after a block of this size.
hdf5_handle create_file(const std::filesystem::path& file, std::size_t block_size) {
    // When a file cannot be written, the library's exit handler would write it again and crash.
    H5dont_atexit();
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr); // the error stack does not help users
    check_writable(file);
    hdf5_handle handle(H5Fcreate(file.string().c_str(), H5F_ACC_TRUNC, small_indexes(block_size),
                                 bounded_metadata_cache()),
                       "creating the file");
    set_hdf5_attribute(handle, "creator", "rtrange " ZEL_VERSION);
    return handle;
}

} // namespace

hdf5_output::hdf5_output(const std::filesystem::path& file, hdf5_dialect dialect,
                         result_rules rules, const table_columns& columns)
    : result_(file, dialect == hdf5_dialect::matlab ? mat_file : hdf5_file, rules),
      columns_(columns) {
    if (dialect == hdf5_dialect::matlab)
        labels_.emplace();
}

void hdf5_output::write(const table_row& row) {
    try {
        hdf5_table& table = tables_[row.table] != nullptr ? *tables_[row.table] : open(row);
        table.write(row.cells);
    } catch (const hdf5_error& error) {
        fail(error);
    }
}

void hdf5_output::close() {
    if (!file_)
        return;
    try {
        close_tables();
        file_->close();
    } catch (const hdf5_error& error) {
        fail(error);
    }
    if (labels_)
        write_mat_header(result_.path(), start_ns_);
    result_.complete();
}

void hdf5_output::close_tables() {
    for (const auto& table : tables_)
        if (table != nullptr)
            table->flush();
    chunks_.finish();
    for (const auto& table : tables_)
        if (table != nullptr)
            table->close();
    if (labels_)
        labels_->write(*file_);
}

std::vector<written_table> hdf5_output::tables() const {
    std::vector<written_table> result;
    for (std::size_t i = 0; i < table_count; ++i)
        if (tables_[i] != nullptr)
            result.push_back(
                {fmt::format("{} /{}", result_.target().string(), table_descriptions()[i].name),
                 tables_[i]->rows(), std::string(table_descriptions()[i].name)});
    return result;
}

hdf5_table& hdf5_output::open(const table_row& first_row) {
    if (!file_) {
        file_.emplace(create_file(result_.path(), labels_ ? mat_block_size : 0));
        start_ns_ = first_row.reference_timestamp;
    }
    const std::size_t table = first_row.table;
    tables_[table] =
        std::make_unique<hdf5_table>(*file_, table_descriptions()[table], columns_[table], chunks_,
                                     labels_ ? &*labels_ : nullptr);
    return *tables_[table];
}

void hdf5_output::fail(const hdf5_error& error) const {
    throw failure(fmt::format("cannot write '{}': {}", result_.target().string(), error.what()));
}

} // namespace rtrange
