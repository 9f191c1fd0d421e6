#pragma once
// Observers and objects that make the document's notifications visible.
#include <string>
#include <vector>

#include "document/file.h"
#include "document/file_observer.h"
#include "document/file_update_hint.h"
#include "effects/effect_update_hint.h"
#include "flash/swf_shape.h"
#include "objects/object.h"
#include "platform/zo_string.h"

namespace document_test {

/// Each delivery becomes one line: the hints as the observer should read
/// them ("+0" effect inserted at 0, "-1" removed from 1, "=0" replaced,
/// "~" effect changed, "S" settings, "sel"/"unsel" selection).
class RecordingObserver : public TeskFileObserver {
  public:
    ~RecordingObserver() override { DetachFromFile(); }

    void OnUpdate(ZoEditor::ZoUpdateHintList& hints) override {
        std::string line;
        for (int i = 0; i < hints.GetCount(); ++i) {
            bool reversed = false;
            ZoEditor::ZoUpdateHint* hint = hints.GetHint(i, reversed);
            if (!line.empty())
                line += ' ';
            line += Describe(*hint, reversed);
        }
        deliveries.push_back(line);
    }

    std::vector<std::string> deliveries;
    int attaches = 0;
    int detaches = 0;

  protected:
    void OnTeskFileAttach() override { ++attaches; }
    void OnTeskFileDetach() override { ++detaches; }

  private:
    static std::string Describe(ZoEditor::ZoUpdateHint& hint, bool reversed) {
        if (auto* effect = dynamic_cast<TeskEffectUpdateHint*>(&hint)) {
            switch (effect->GetKind(reversed)) {
                case kTeskEffectInserted:
                    return "+" + std::to_string(effect->GetIndex());
                case kTeskEffectRemoved:
                    return "-" + std::to_string(effect->GetIndex());
                case kTeskEffectReplaced:
                    return "=" + std::to_string(effect->GetIndex());
                default:
                    return "~";
            }
        }
        if (dynamic_cast<TeskFileUpdateHint*>(&hint))
            return "S";
        if (auto* selection = dynamic_cast<ZoEditor::ZoSelectionUpdateHint<TeskEffect>*>(&hint))
            return selection->IsDeselected() ? "unsel" : "sel";
        return "?";
    }
};

/// An object with a natural size (or none when the size is zero).
class SizedObject : public TeskObject {
  public:
    explicit SizedObject(ZoSize size = {}) : TeskObject(kTeskImageObject), size_(size) {}
    ZoAutoPtr<TeskObject> Clone() const override { return std::make_unique<SizedObject>(size_); }
    bool CanFillPieces() const override { return true; }
    ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeTriangleShape(TeskSWFMovie&, const ZoRect&,
                                                            const TeskTriangle&) override {
        return nullptr;
    }
    ZoAutoInterface2<ZoFlash::ZoSWFObject> MakeShape(TeskSWFMovie&, const ZoRect&) override {
        return nullptr;
    }
    bool GetNaturalSize(ZoSize& size) const override {
        size = size_;
        return size_.cx != 0 || size_.cy != 0;
    }
    void Read(ZoFolderFile&) override {}
    void Write(ZoFolderFile&) const override {}
    void VisitFields(TeskFieldVisitor&) override {}
    ZoSize GetSize() const { return size_; }

  private:
    ZoSize size_;
};

}  // namespace document_test
