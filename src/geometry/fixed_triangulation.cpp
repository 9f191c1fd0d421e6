#include "geometry/fixed_triangulation.h"

#include <algorithm>

#include "platform/folder_file.h"
#include "platform/zo_exception.h"

const TeskPoint2D& TeskFixedTriangulation::GetPoint(int32_t, int32_t) const {
    static const TeskPoint2D origin;
    return origin;
}

void TeskFixedTriangulation::ReadFields(ZoFolderFile& file,
                                        std::initializer_list<Field> fields) noexcept {
    for (const Field& field : fields)
        *field.value = field.fallback;
    try {
        ZoFolderGuard folder(file, false);
        for (const Field& field : fields)
            *field.value = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        // A short record: what was read stands, the rest keeps its fallback.
    } catch (const std::exception&) {
        for (const Field& field : fields)
            *field.value = field.fallback;
    }
}

int32_t TeskFixedTriangulation::BoundedCount(int32_t value, int32_t minimum) noexcept {
    constexpr int32_t kLargest = 10000;
    return std::clamp(value, minimum, kLargest);
}

void TeskFixedTriangulation::WriteFields(ZoFolderFile& file,
                                         std::initializer_list<int32_t> values) {
    ZoFolderGuard folder(file, true);
    for (int32_t value : values)
        file.WriteInt32(value);
}
