#pragma once
// A path that something travels along over an animation, in the unit space of
// the object rectangle ((0, 0) top left, (1, 1) bottom right; points outside
// are allowed). Nodes start straight, quadratic or cubic segments; keys pin
// chosen nodes to times from 0 to 1. Between two keys the distance travelled
// grows linearly with time; on a curve the distance becomes the curve's
// parameter by plain proportion, so the speed along a curve is not uniform.
#include <cstdint>
#include <vector>

#include "geometry/point_2d.h"

class TeskFieldVisitor;
class ZoFolderFile;

class TeskAnimationPath {
  public:
    /// What starts at a node.
    enum NodeKind : int32_t {
        kLine = 0,           // a straight segment to the next node
        kQuadratic = 1,      // a curve through the next node as control point
        kCubic = 3,          // a curve through the next two nodes as control points
        kFirstControl = 4,   // the first control point of a cubic segment
        kSecondControl = 5,  // the second control point of a cubic segment
        kEnd = 6,            // the end of the path
    };

    struct PathNode {
        int32_t kind = kLine;
        TeskPoint2D point;
        /// Length of the segment that starts here; computed by Prepare.
        double length = 0.0;
    };

    struct PathKey {
        int32_t node = 0;
        double time = 0.0;  // 0..1
        /// Length from this key's node to the next key's; computed by Prepare.
        double span = 0.0;
    };

    /// The sixteen paths the lens offers, in the picker's order: the first
    /// ten are "Left to right" ... "Anticlockwise circle", then squares
    /// clockwise and anticlockwise, a figure of eight, a zigzag, an arch and
    /// a wave. Each has a key at its first node (time 0) and its last (time 1).
    /// Indices out of range give the last.
    static constexpr int32_t kPresetCount = 16;
    static TeskAnimationPath Preset(int32_t index);

    int32_t GetNodeCount() const noexcept { return static_cast<int32_t>(nodes_.size()); }
    int32_t GetKeyCount() const noexcept { return static_cast<int32_t>(keys_.size()); }
    const PathNode& GetNode(int32_t index) const { return nodes_.at(index); }
    const PathKey& GetKey(int32_t index) const { return keys_.at(index); }

    /// Inserts a node before `index` (at the end for the count); keys on
    /// later nodes follow their nodes.
    void InsertNode(int32_t index, int32_t kind, TeskPoint2D point);
    /// Removes a node; keys on later nodes follow their nodes, and a key on
    /// the removed node marks the node that moves into its place.
    void RemoveNode(int32_t index);
    void InsertKey(int32_t index, int32_t node, double time);
    void RemoveKey(int32_t index);
    /// Appends a quarter circle about `centre` from `start` to `end` as a cubic
    /// segment, continuing the path when it ends at `start`. Clockwise as seen
    /// on the screen (y down). Keys on the old last node move to the new one.
    void AppendArc(TeskPoint2D start, TeskPoint2D end, TeskPoint2D centre, bool clockwise);

    /// Computes every node's `length` and every key's `span`.
    void Prepare();
    bool IsPrepared() const noexcept { return prepared_; }
    /// The place on the path at `time` (0..1), from the last key before it.
    /// Works on a prepared copy when this path is not prepared.
    TeskPoint2D Evaluate(double time) const;

    /// The nodes and keys by name; reading leaves the path unprepared.
    void VisitFields(TeskFieldVisitor& visitor);
    /// The path's record in its own unnamed folder: the nodes, then the keys.
    void Read(ZoFolderFile& file);
    void Write(ZoFolderFile& file) const;

    /// Same nodes (kind and exact point) and keys (node and exact time).
    friend bool operator==(const TeskAnimationPath& a, const TeskAnimationPath& b) noexcept;

  private:
    // Node `index`'s point, or the nearest existing node's for an index out of
    // range (paths read from a file may hold such keys).
    TeskPoint2D PointOf(int32_t index) const noexcept;
    // The length of the curve from node `first` through `degree` more nodes.
    double CurveLength(int32_t first, int32_t degree) const noexcept;
    // The point at `parameter` of that curve.
    TeskPoint2D CurvePoint(int32_t first, int32_t degree, double parameter) const noexcept;
    // Where the distance `along` from key `from`'s node falls before key
    // `to`'s node.
    TeskPoint2D PointAlong(const PathKey& from, const PathKey& to, double along) const noexcept;

    std::vector<PathNode> nodes_;
    std::vector<PathKey> keys_;
    bool prepared_ = false;
};
