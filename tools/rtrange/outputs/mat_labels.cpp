#include "tools/rtrange/outputs/mat_labels.hpp"

#include <string_view>

#include "tools/rtrange/outputs/hdf5_handle.hpp"
#include "tools/rtrange/outputs/mat_file.hpp"

namespace rtrange {

std::uint32_t mat_labels::numbering::number_of(const char* text) {
    const std::string_view key(text);
    if (const auto known = numbers_.find(key); known != numbers_.end())
        return known->second;
    texts_.emplace_back(key);
    const auto number = static_cast<std::uint32_t>(texts_.size());
    numbers_.emplace(key, number);
    return number;
}

mat_labels::numbering& mat_labels::numbering_of(const column& entry) {
    numbering& result = columns_[entry.name];
    for (const char* const text : entry.known_texts)
        result.number_of(text);
    return result;
}

void mat_labels::write(hid_t file) const {
    if (columns_.empty())
        return;
    const hdf5_handle group(H5Gcreate2(file, "labels", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT),
                            "creating a group");
    std::vector<std::string> names;
    for (const auto& [name, numbered] : columns_) {
        write_mat_texts(group, name, numbered.texts());
        names.push_back(name);
    }
    make_mat_struct(group, names);
}

} // namespace rtrange
