#include "zel_rt_range_formatter/src/metadata.hpp"

#include "version.hpp"
#include "zel_rt_range_formatter/src/section.hpp"

namespace zel::toolbox::rt_range {
namespace {

ZEL_IN_SECTION(".zelrt")
const char text[] = "zel-meta=nddictionary\n"
                    "zel-sdk-version=" ZEL_VERSION "\n"
                    "build-configuration=release\n"
                    "build-platform=Win32\n"
                    "build-architecture=x64\n"
                    "build-date=" ZEL_BUILD_DATE "\n"
                    "compiler=" ZEL_COMPILER "\n"
                    "compiler-version=" ZEL_COMPILER_VERSION "\n"
                    "zel-product-version=" ZEL_VERSION "\n"
                    "zel-library-type=formatter";

} // namespace

const char* metadata() {
    return text;
}

} // namespace zel::toolbox::rt_range
