#pragma once
// The lens's path picker: a drop-down of the preset paths drawn as pictures,
// four to a row, each with arrow heads showing the way it runs.
#include <QComboBox>
#include <optional>

#include "effects/animation_path.h"

class TeskAnimationPathCombo final : public QComboBox {
    Q_OBJECT
  public:
    explicit TeskAnimationPathCombo(QWidget* parent = nullptr);

    /// Selects the first preset equal to `path`; none when no preset is.
    void SetSelectedPath(const TeskAnimationPath& path);
    /// The selected preset; nothing without a selection.
    std::optional<TeskAnimationPath> GetSelectedPath() const;

    /// `path` drawn into a picture of `size`.
    static QPixmap DrawPath(const TeskAnimationPath& path, QSize size);
};
