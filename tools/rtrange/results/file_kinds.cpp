#include "tools/rtrange/results/file_kinds.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <ios>
#include <memory>
#include <string>
#include <string_view>

#include "simulation/simulated_traffic.hpp"
#include "tools/rtrange/outputs/hdf5_handle.hpp"

namespace rtrange {
namespace {

std::string first_bytes(const std::filesystem::path& file, std::size_t most) {
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(most, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(most));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

bool is_report(const std::filesystem::path& file) {
    constexpr std::size_t head_size = 1024;
    return first_bytes(file, head_size).find("<meta name=\"generator\" content=\"rtrange\">") !=
           std::string::npos;
}

bool is_summary(const std::filesystem::path& file) {
    constexpr std::string_view head = "{\n  \"rtrange_summary\": ";
    return first_bytes(file, head.size()) == head;
}

std::string creator_of(const std::filesystem::path& file) {
    const hdf5_handle opened(H5Fopen(file.string().c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), "");
    const hdf5_handle creator(H5Aopen(opened, "creator", H5P_DEFAULT), "");
    const hdf5_handle type(H5Aget_type(creator), "");
    const hdf5_handle space(H5Aget_space(creator), "");
    if (H5Tis_variable_str(type) <= 0 || H5Sget_simple_extent_npoints(space) != 1)
        return {};
    const hdf5_handle text_type = hdf5_text_type(H5T_VARIABLE);
    check_hdf5(H5Tset_cset(text_type, H5Tget_cset(type)), "");
    char* text = nullptr;
    check_hdf5(H5Aread(creator, text_type, &text), "");
    const std::unique_ptr<char, herr_t (*)(void*)> owner(
        text, [](void* memory) { return H5free_memory(memory); });
    return text != nullptr ? text : "";
}

bool is_hdf5_of_rtrange(const std::filesystem::path& file) {
    // First of all calls: when a file cannot be written later, the library's exit handler would
    // write it again and crash.
    H5dont_atexit();
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr); // the error stack does not help users
    try {
        return creator_of(file).starts_with("rtrange ");
    } catch (const hdf5_error&) {
        return false;
    }
}

template <typename T>
T number_at(std::string_view bytes, std::size_t offset) {
    T number{};
    std::memcpy(&number, bytes.data() + offset, sizeof(number));
    return number;
}

bool is_simulated(const std::filesystem::path& file) {
    using namespace zel::simulation;
    constexpr std::uint32_t pcap_with_nanoseconds = 0xA1B23C4D;
    constexpr std::size_t first_record = 24, frame = first_record + 16, ip_source = frame + 26;
    constexpr std::size_t read_size = ip_source + sizeof(ip_address);
    const std::string bytes = first_bytes(file, read_size);
    if (bytes.size() < read_size || number_at<std::uint32_t>(bytes, 0) != pcap_with_nanoseconds)
        return false;
    const std::uint64_t time_ns =
        number_at<std::uint32_t>(bytes, first_record) * std::uint64_t{1'000'000'000} +
        number_at<std::uint32_t>(bytes, first_record + 4);
    return time_ns == start_time_ns && number_at<ip_address>(bytes, ip_source) == unit_addresses[0];
}

} // namespace

const file_kind report_page_file{"a report of rtrange", is_report};
const file_kind summary_file{"a summary of rtrange", is_summary};
const file_kind hdf5_file{"an HDF5 file of rtrange", is_hdf5_of_rtrange};
const file_kind mat_file{"a MAT file of rtrange", is_hdf5_of_rtrange};
const file_kind simulated_capture_file{"a simulated capture", is_simulated};

} // namespace rtrange
