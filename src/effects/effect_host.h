#pragma once
// What an effect needs of the document that holds it. The document lives in a
// higher layer, so effects reach it only through this interface.
namespace ZoEditor {
class ZoUpdateHint;
}

class TeskEffectHost {
  public:
    /// Names every observer of the document as a target of `hint`.
    virtual void NotifyObservers(ZoEditor::ZoUpdateHint& hint) = 0;
    /// The publish setting "Offset movie to suit movie clip".
    virtual bool GetOffsetForMovieClip() const = 0;

  protected:
    ~TeskEffectHost() = default;
};
