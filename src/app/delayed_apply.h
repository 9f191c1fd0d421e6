#pragma once
// Edits in a page or panel are gathered and applied after a pause, so that
// dragging a slider or typing a number becomes one undo step.
#include <QObject>
#include <QTimer>
#include <functional>

class TeskDelayedApply final : public QObject {
    Q_OBJECT
  public:
    /// The pause after the last edit.
    static constexpr int kDefaultDelayMs = 2000;

    explicit TeskDelayedApply(std::function<void()> apply, QObject* parent = nullptr);

    void SetDelay(int ms) { timer_.setInterval(ms); }
    int GetDelay() const { return timer_.interval(); }

    /// An edit: the pause starts again.
    void Restart() { timer_.start(); }
    /// Applies now if an edit is waiting.
    void Flush();
    /// Forgets a waiting edit (the controls were reloaded).
    void Stop() { timer_.stop(); }
    bool IsPending() const { return timer_.isActive(); }

  private:
    QTimer timer_;
    std::function<void()> apply_;
};
