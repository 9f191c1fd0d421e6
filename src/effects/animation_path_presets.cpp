// The paths the lens offers on its page.
#include <initializer_list>

#include "effects/animation_path.h"

namespace {

using Path = TeskAnimationPath;

struct PresetNode {
    int32_t kind;
    TeskPoint2D point;
};

Path FromNodes(std::initializer_list<PresetNode> nodes) {
    Path path;
    for (const PresetNode& node : nodes)
        path.InsertNode(path.GetNodeCount(), node.kind, node.point);
    return path;
}

// Four quarter circles about the middle through `points`, the first again last.
Path Circle(std::initializer_list<TeskPoint2D> points, bool clockwise) {
    Path path;
    const TeskPoint2D* p = points.begin();
    for (int i = 0; i < 4; ++i)
        path.AppendArc(p[i], p[(i + 1) % 4], {0.5, 0.5}, clockwise);
    return path;
}

Path Unkeyed(int32_t index) {
    constexpr int32_t L = Path::kLine, C = Path::kCubic, C1 = Path::kFirstControl,
                      C2 = Path::kSecondControl, E = Path::kEnd;
    switch (index) {
        case 0:
            return FromNodes({{L, {0, 0.5}}, {E, {1, 0.5}}});
        case 1:
            return FromNodes({{L, {1, 0.5}}, {E, {0, 0.5}}});
        case 2:
            return FromNodes({{L, {0.5, 0}}, {E, {0.5, 1}}});
        case 3:
            return FromNodes({{L, {0.5, 1}}, {E, {0.5, 0}}});
        case 4:
            return FromNodes({{L, {0, 0}}, {E, {1, 1}}});
        case 5:
            return FromNodes({{L, {1, 1}}, {E, {0, 0}}});
        case 6:
            return FromNodes({{L, {1, 0}}, {E, {0, 1}}});
        case 7:
            return FromNodes({{L, {0, 1}}, {E, {1, 0}}});
        case 8:
            return Circle({{0.5, 0.2}, {0.8, 0.5}, {0.5, 0.8}, {0.2, 0.5}}, true);
        case 9:
            return Circle({{0.5, 0.2}, {0.2, 0.5}, {0.5, 0.8}, {0.8, 0.5}}, false);
        case 10:
            return FromNodes({{L, {0.2, 0.2}},
                              {L, {0.8, 0.2}},
                              {L, {0.8, 0.8}},
                              {L, {0.2, 0.8}},
                              {E, {0.2, 0.2}}});
        case 11:
            return FromNodes({{L, {0.2, 0.2}},
                              {L, {0.2, 0.8}},
                              {L, {0.8, 0.8}},
                              {L, {0.8, 0.2}},
                              {E, {0.2, 0.2}}});
        case 12:
            return FromNodes({{L, {0.4, 0.2}},
                              {C, {0.6, 0.8}},
                              {C1, {0.7, 1.1}},
                              {C2, {0.9, 0.8}},
                              {C, {0.9, 0.5}},
                              {C1, {0.9, 0.2}},
                              {C2, {0.7, -0.1}},
                              {L, {0.6, 0.2}},
                              {C, {0.4, 0.8}},
                              {C1, {0.3, 1.1}},
                              {C2, {0.1, 0.8}},
                              {C, {0.1, 0.5}},
                              {C1, {0.1, 0.2}},
                              {C2, {0.3, -0.1}},
                              {L, {0.4, 0.2}}});
        case 13:
            return FromNodes({{L, {0, 0.35}}, {L, {0.8, 0.45}}, {L, {0.2, 0.55}}, {L, {1, 0.65}}});
        case 14:
            return FromNodes({{C, {0, 1}},
                              {C1, {0.05, 0.5}},
                              {C2, {0.25, 0.2}},
                              {C, {0.5, 0.2}},
                              {C1, {0.75, 0.2}},
                              {C2, {0.95, 0.5}},
                              {L, {1, 1}}});
        default:
            return FromNodes({{L, {0, 0.5}}, {L, {0.25, 0.2}}, {L, {0.75, 0.8}}, {L, {1, 0.5}}});
    }
}

}  // namespace

TeskAnimationPath TeskAnimationPath::Preset(int32_t index) {
    Path path = Unkeyed(index);
    path.InsertKey(0, 0, 0.0);
    path.InsertKey(1, path.GetNodeCount() - 1, 1.0);
    return path;
}
