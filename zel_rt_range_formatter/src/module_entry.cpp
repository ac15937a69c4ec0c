// The two exports of the library.

#include <array>
#include <cstddef>

#include "zel/formatter.h"
#include "zel_rt_range_formatter/src/dispatch_tables.hpp"
#include "zel_rt_range_formatter/src/metadata.hpp"
#include "zel_rt_range_formatter/src/section.hpp"

#if defined(_WIN32)
#define ZEL_EXPORT extern "C" __declspec(dllexport)
#else
#define ZEL_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace zel::toolbox::rt_range {
namespace {

/// Slots of the registration area; all but two are null.
constexpr std::size_t slot_count = 70;
using registration_slots = std::array<const zel_formatter_dispatch_table_t*, slot_count>;

consteval registration_slots make_slots() {
    registration_slots slots{};
    slots[34] = &rt_range_formatter_dispatch_table;
    slots[36] = &rt_range_ethernet_formatter_dispatch_table;
    return slots;
}

ZEL_IN_SECTION(".tirel") constinit registration_slots registration_area = make_slots();

} // namespace
} // namespace zel::toolbox::rt_range

ZEL_EXPORT void zel_enum_formatter_dispatch_table(zel_formatter_dispatch_table_callback_t callback,
                                                  void* context) {
    if (callback == nullptr)
        return;
    for (const auto* dispatch_table : zel::toolbox::rt_range::registration_area)
        if (dispatch_table != nullptr && !callback(dispatch_table, context))
            return;
}

ZEL_EXPORT const char* zel_runtime_query_metadata() {
    return zel::toolbox::rt_range::metadata();
}
