#include <gtest/gtest.h>
#include <QCheckBox>
#include <QComboBox>
#include <QMenu>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <algorithm>

#include "app/grid_combo.h"
#include "app/mesh_control.h"
#include "app/morph_mesh_panel.h"
#include "document/file.h"
#include "effects/morph_effect.h"
#include "effects/register_effects.h"
#include "effects/wave_effect.h"
#include "geometry/edit_grid_triangulation.h"

namespace {

// The default morph grid is 5 × 5 cells: point (c, r) has index c + 6·r.
constexpr int32_t PointIndex(int32_t c, int32_t r) {
    return c + 6 * r;
}

class MeshControlTest : public ::testing::Test {
  protected:
    MeshControlTest() {
        TeskRegisterEffects();
        ZoAutoPtr<TeskEffect> morph = std::make_unique<TeskMorphEffect>();
        effect_ = static_cast<TeskMorphEffect*>(morph.get());
        document_.InsertEffect(morph, 0, nullptr);
        panel_ = std::make_unique<TeskMorphMeshPanel>(document_, *effect_);
        panel_->resize(640, 360);
        panel_->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(panel_.get()));
    }

    TeskMeshCtrl& Mesh(int set) { return *panel_->GetMeshCtrl(set); }
    TeskPoint2D Stored(int32_t index, int32_t set) const {
        return effect_->GetTriangulation().GetPoint(index, set);
    }
    /// Presses on point `index` of the start mesh, moves by `delta` in two
    /// steps and lets go.
    void Drag(int32_t index, QPoint delta, Qt::KeyboardModifiers modifiers) {
        QWidget* viewport = Mesh(0).viewport();
        const QPoint from = Mesh(0).UnitToClient(Stored(index, 0));
        QTest::mousePress(viewport, Qt::LeftButton, modifiers, from);
        for (const QPoint to : {from + delta / 2, from + delta}) {
            QMouseEvent move(QEvent::MouseMove, to, viewport->mapToGlobal(to), Qt::NoButton,
                             Qt::LeftButton, modifiers);
            QApplication::sendEvent(viewport, &move);
        }
        QTest::mouseRelease(viewport, Qt::LeftButton, modifiers, from + delta);
    }

    TeskFile document_;
    TeskMorphEffect* effect_ = nullptr;
    std::unique_ptr<TeskMorphMeshPanel> panel_;
};

TEST_F(MeshControlTest, DragsMoveThePickedPointsByTheDraggedDistanceAndUndoRestoresThem) {
    struct Case {
        const char* what;
        int32_t c, r;
        QPoint delta;
        Qt::KeyboardModifiers modifiers;
        std::vector<std::pair<int32_t, int32_t>> moved;  // (c, r) of the points that follow
        bool stored;
        double allowX, allowY;  // 1 where the point may move along that axis, else 0
    };
    const Case cases[] = {
        {"inner point", 2, 2, {14, 9}, Qt::NoModifier, {{2, 2}}, true, 1, 1},
        {"a click that never moved 4 pixels", 2, 2, {3, -3}, Qt::NoModifier, {}, false, 0, 0},
        // The row's and column's border points stay on their edges.
        {"Ctrl carries the row",
         3,
         2,
         {9, 0},
         Qt::ControlModifier,
         {{1, 2}, {2, 2}, {3, 2}, {4, 2}},
         true,
         1,
         1},
        {"Shift carries the column",
         3,
         2,
         {0, -7},
         Qt::ShiftModifier,
         {{3, 1}, {3, 2}, {3, 3}, {3, 4}},
         true,
         1,
         1},
        {"a border point slides along its edge",
         2,
         0,
         {12, 30},
         Qt::NoModifier,
         {{2, 0}},
         true,
         1,
         0},
        {"a root corner stays", 0, 0, {20, 20}, Qt::NoModifier, {}, false, 0, 0},
    };
    const int width = Mesh(0).ObjectRect().width() - 1;
    const int height = Mesh(0).ObjectRect().height() - 1;
    ASSERT_GT(width, 100);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto before = effect_->GetTriangulation().Clone();
        const int history = document_.GetUndoList().GetPosition();
        Drag(PointIndex(c.c, c.r), c.delta, c.modifiers);
        EXPECT_EQ(Mesh(1).GetSelectedPoint(), PointIndex(c.c, c.r));
        ASSERT_EQ(document_.GetUndoList().GetPosition(), history + (c.stored ? 1 : 0));
        if (c.stored) {
            EXPECT_EQ(document_.GetUndoList().GetName(history), TeskMorphMeshPanel::kEditMeshName);
        }
        const TeskPoint2D shift{c.allowX * c.delta.x() / width, c.allowY * c.delta.y() / height};
        for (int32_t i = 0; i < before->GetPointCount(); ++i) {
            const bool follows = std::count(c.moved.begin(), c.moved.end(),
                                            std::pair<int32_t, int32_t>{i % 6, i / 6}) > 0;
            const TeskPoint2D expected = before->GetPoint(i, 0) + (follows ? shift : TeskPoint2D{});
            EXPECT_NEAR(Stored(i, 0).x, expected.x, 1e-12) << i;
            EXPECT_NEAR(Stored(i, 0).y, expected.y, 1e-12) << i;
            EXPECT_EQ(Stored(i, 1), before->GetPoint(i, 1)) << "the end mesh stays, point " << i;
        }
        if (c.stored) {
            ASSERT_TRUE(document_.GetUndoList().Undo());
            for (int32_t i = 0; i < before->GetPointCount(); ++i)
                EXPECT_EQ(Stored(i, 0), before->GetPoint(i, 0)) << "after undo, point " << i;
        }
    }
}

TEST_F(MeshControlTest, LinkedControlsShareZoomSelectionAndScrolling) {
    Mesh(0).ZoomIn();
    EXPECT_EQ(Mesh(1).GetZoom(), 2);
    Mesh(1).ZoomIn();
    EXPECT_EQ(Mesh(0).GetZoom(), 4);
    EXPECT_FALSE(Mesh(0).CanZoomIn());
    Mesh(0).ZoomIn();
    EXPECT_EQ(Mesh(1).GetZoom(), 4);

    Mesh(0).horizontalScrollBar()->setValue(150);
    EXPECT_EQ(Mesh(1).horizontalScrollBar()->value(), 150);
    const QPoint corner = Mesh(0).UnitToClient({0, 0});
    EXPECT_EQ(corner.x(), Mesh(0).ObjectRect().left() - 150);

    Mesh(1).SetSelectedPoint(7);
    EXPECT_EQ(Mesh(0).GetSelectedPoint(), 7);
    // A click far from every point clears the selection in both.
    QTest::mouseClick(Mesh(0).viewport(), Qt::LeftButton, Qt::NoModifier,
                      Mesh(0).UnitToClient({0.1, 0.1}));
    EXPECT_EQ(Mesh(1).GetSelectedPoint(), -1);
}

TEST_F(MeshControlTest, MorphGridCommandsChangeTheMeshAsOneStoredStep) {
    struct Case {
        const char* command;
        TeskPoint2D at;  // where the right click lands, in unit space
        int32_t points, across;
    };
    const Case cases[] = {
        {"Insert Column", {0.5, 0.5}, 42, 6},
        {"Delete Column", {0.9, 0.5}, 30, 4},  // the last column clamps to the line left of it
        {"Insert Row", {0.5, 0.1}, 42, 5},
        {"Split Grid", {0.1, 0.1}, 41, 5},  // a 2 × 2 child: five more points
        {"Delete Row", {0.5, 0.9}, 30, 5},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        const int history = document_.GetUndoList().GetPosition();
        // The menu runs its own loop: choose the command as soon as it shows.
        QTimer::singleShot(0, [&c] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions()) {
                if (action->text() == QString::fromUtf8(c.command)) {
                    EXPECT_TRUE(action->isEnabled());
                    action->trigger();
                }
            }
            menu->close();
        });
        QTest::mousePress(Mesh(0).viewport(), Qt::RightButton, Qt::NoModifier,
                          Mesh(0).UnitToClient(c.at));
        const auto* grid = effect_->GetEditGrid();
        ASSERT_NE(grid, nullptr);
        EXPECT_EQ(grid->GetPointCount(), c.points);
        EXPECT_EQ(grid->Root().across, c.across);
        EXPECT_TRUE(grid->IsValid());
        EXPECT_EQ(document_.GetUndoList().GetPosition(), history + 1);
        ASSERT_TRUE(document_.GetUndoList().Undo());
        EXPECT_EQ(effect_->GetTriangulation().GetPointCount(), 36);
    }
}

TEST(GridControl, EachApplicationIsOneChangeNamedAfterWhatChanged) {
    struct Case {
        const char* what;
        std::function<void(TeskGridComboPopup&)> edit;
        const char* name;  // null: nothing is recorded
        bool chooseGrid;
        int32_t maxTriangles, across;
    };
    auto box = [](TeskGridComboPopup& panel, const char* name) {
        return panel.findChild<QSpinBox*>(QString::fromUtf8(name));
    };
    const Case cases[] = {
        {"untouched", [](TeskGridComboPopup&) {}, nullptr, true, 50, 40},
        {"the check box", [](TeskGridComboPopup& p) { p.findChild<QCheckBox*>()->click(); },
         "Edit Intelligent Triangles", false, 50, 40},
        {"one number", [&](TeskGridComboPopup& p) { box(p, "maxTriangles")->setValue(120); },
         "Edit Maximum Triangles", true, 120, 40},
        // Across shows 15 for a stored 40; only typing there changes it.
        {"two numbers",
         [&](TeskGridComboPopup& p) {
             box(p, "maxTriangles")->setValue(30);
             box(p, "across")->setValue(7);
         },
         "Edit Grid", true, 30, 7},
    };
    TeskRegisterEffects();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TeskFile document;
        auto& effect = static_cast<TeskGridEffect&>(*document.GetEffect(0));
        TeskGridEffect::GridSettings settings = effect.GetGridSettings();
        settings.across = 40;
        effect.SetGridSettings(settings, nullptr);
        TeskGridComboPopup panel(document, effect);
        c.edit(panel);
        panel.Apply();
        const auto& history = document.GetUndoList();
        ASSERT_EQ(history.GetCount(), c.name ? 1 : 0);
        if (c.name) {
            EXPECT_EQ(history.GetName(0), c.name);
        }
        EXPECT_EQ(effect.GetGridSettings().chooseGrid, c.chooseGrid);
        EXPECT_EQ(effect.GetGridSettings().maxTriangles, c.maxTriangles);
        EXPECT_EQ(effect.GetGridSettings().across, c.across);
    }
}

}  // namespace
