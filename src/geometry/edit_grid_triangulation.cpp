#include "geometry/edit_grid_triangulation.h"

#include "platform/folder_file.h"
#include "platform/zo_exception.h"

namespace {

constexpr int32_t kDefaultPointSets = 2;
constexpr int32_t kDefaultCells = 4;
constexpr int32_t kLargestPointSetCount = 64;

}  // namespace

TeskEditGridTriangulation::TeskEditGridTriangulation(int32_t pointSetCount)
    : pointSetCount_(pointSetCount), root_(std::make_unique<GridNode>(nullptr, pointSetCount)) {
    root_->Resize(kDefaultCells, kDefaultCells);
}

TeskEditGridTriangulation::TeskEditGridTriangulation(const TeskEditGridTriangulation& other)
    : pointSetCount_(other.pointSetCount_), root_(other.root_->Clone(nullptr)) {}

ZoAutoPtr<TeskTriangulation> TeskEditGridTriangulation::Clone() const {
    return std::make_unique<TeskEditGridTriangulation>(*this);
}

const TeskPoint2D& TeskEditGridTriangulation::GetPoint(int32_t index, int32_t set) const {
    static const TeskPoint2D nowhere;
    GridNode* node = nullptr;
    int32_t c = 0;
    int32_t r = 0;
    if (!root_->LocatePoint(index, node, c, r))
        return nowhere;
    return node->At(c, r, set);
}

void TeskEditGridTriangulation::SetPoint(int32_t index, int32_t set, const TeskPoint2D& point) {
    GridNode* node = nullptr;
    int32_t c = 0;
    int32_t r = 0;
    if (root_->LocatePoint(index, node, c, r))
        node->SetPoint(c, r, set, point);
}

bool TeskEditGridTriangulation::MovePoint(int32_t index, int32_t set, TeskPoint2D& point) {
    GridNode* node = nullptr;
    int32_t c = 0;
    int32_t r = 0;
    return root_->LocatePoint(index, node, c, r) && node->MovePoint(c, r, set, point);
}

void TeskEditGridTriangulation::GetLine(int32_t index, int32_t set, TeskPoint2D& from,
                                        TeskPoint2D& to) const {
    root_->GetLine(index, set, from, to);
}

void TeskEditGridTriangulation::GetTriangle(int32_t index, int32_t set, TeskPoint2D& a,
                                            TeskPoint2D& b, TeskPoint2D& c) const {
    root_->GetTriangle(index, set, a, b, c);
}

bool TeskEditGridTriangulation::HitTest(const TeskPoint2D& p, int32_t set, GridNode*& node,
                                        int32_t& column, int32_t& row) noexcept {
    return root_->HitTest(p, set, node, column, row);
}

void TeskEditGridTriangulation::ResetUniform() {
    root_->ResetUniform(0.0, 0.0, 1.0, 1.0);
}

void TeskEditGridTriangulation::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    file.WriteInt32(pointSetCount_);
    root_->Write(file);
}

void TeskEditGridTriangulation::Read(ZoFolderFile& file) {
    // The tree is built aside and swapped in whole, so a damaged record never
    // leaves half a grid behind.
    try {
        ZoFolderGuard folder(file, false);
        int32_t sets = kDefaultPointSets;
        try {
            sets = file.ReadInt32();
        } catch (const ZoFileNonFatalException&) {
        }
        if (sets < 1 || sets > kLargestPointSetCount)
            throw ZoException("The grid record is damaged.");
        ZoAutoPtr<GridNode> root = GridNode::Read(file, nullptr, sets);
        pointSetCount_ = sets;
        root_ = std::move(root);
    } catch (const std::exception&) {
        pointSetCount_ = kDefaultPointSets;
        root_ = std::make_unique<GridNode>(nullptr, kDefaultPointSets);
        root_->Resize(kDefaultCells, kDefaultCells);
    }
}
