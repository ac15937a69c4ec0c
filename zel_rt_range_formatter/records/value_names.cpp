#include "zel_rt_range_formatter/records/value_names.hpp"

namespace zel::toolbox::rt_range {

std::span<const value_name> navigation_status_names() {
    static constexpr value_name names[]{
        {0, "invalid"},         {1, "raw IMU measurements"},
        {2, "initialising"},    {3, "locking"},
        {4, "locked"},          {10, "status only"},
        {11, "internal use"},   {20, "trigger packet"},
        {21, "trigger packet"}, {22, "trigger packet"},
    };
    return names;
}

std::span<const value_name> mode_names() {
    static constexpr value_name names[]{
        {0, "none"},
        {1, "search"},
        {2, "Doppler"},
        {3, "SPS"},
        {4, "differential"},
        {5, "RTK float"},
        {6, "RTK integer"},
        {7, "SBAS"},
        {8, "OmniSTAR VBS"},
        {9, "OmniSTAR HP"},
        {10, "no data"},
        {11, "blanked"},
        {12, "Doppler, post-processed"},
        {13, "SPS, post-processed"},
        {14, "differential, post-processed"},
        {15, "RTK float, post-processed"},
        {16, "RTK integer, post-processed"},
        {17, "OmniSTAR XP"},
        {18, "CDGPS"},
        {19, "not recognised"},
        {20, "Doppler (20)"},
        {21, "SPS (21)"},
        {22, "differential (22)"},
        {23, "RTK float (23)"},
        {24, "RTK integer (24)"},
        {25, "Doppler (25)"},
        {26, "SPS (26)"},
        {27, "differential (27)"},
        {28, "RTK float (28)"},
        {29, "RTK integer (29)"},
        {30, "PPP converging"},
        {31, "PPP"},
        {32, "unknown"},
    };
    return names;
}

} // namespace zel::toolbox::rt_range
