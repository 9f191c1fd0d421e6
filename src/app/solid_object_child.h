#pragma once
#include <QWidget>
#include <functional>

class TeskSolidObject;

/// The "Solid Colour" page of the object dialog: one colour.
class TeskSolidObjectChild final : public QWidget {
  public:
    /// Edits `object` directly and calls `changed` after every change.
    TeskSolidObjectChild(TeskSolidObject& object, std::function<void()> changed,
                         QWidget* parent = nullptr);
};
