#include "effects/three_d_effect.h"

#include "effects/record_fallback.h"
#include "objects/field_visitor.h"
#include "platform/folder_file.h"

void Tesk3DEffect::ThreeDState::VisitFields(TeskFieldVisitor& visitor) {
    GridState::VisitFields(visitor);
    Lighting& l = lighting;
    visitor.Field("useLighting", l.useLighting);
    visitor.Field("brightness", l.brightness);
    visitor.Field("contrast", l.contrast);
    visitor.Colour("lightColour", l.lightColour);
    visitor.Field("lightStrength", l.lightStrength);
    visitor.Colour("darkColour", l.darkColour);
    visitor.Field("darkStrength", l.darkStrength);
    visitor.Field("lightDirection", l.lightDirection);
    visitor.Field("lightAngle", l.lightAngle);
}

void Tesk3DEffect::SetLighting(const Lighting& lighting, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&ThreeDState::lighting, lighting, transaction);
}
void Tesk3DEffect::SetUseLighting(bool use, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::useLighting, use, transaction);
}
void Tesk3DEffect::SetBrightness(int32_t brightness, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::brightness, brightness, transaction);
}
void Tesk3DEffect::SetContrast(int32_t contrast, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::contrast, contrast, transaction);
}
void Tesk3DEffect::SetLightColour(COLORREF colour, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::lightColour, colour, transaction);
}
void Tesk3DEffect::SetLightStrength(int32_t strength, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::lightStrength, strength, transaction);
}
void Tesk3DEffect::SetDarkColour(COLORREF colour, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::darkColour, colour, transaction);
}
void Tesk3DEffect::SetDarkStrength(int32_t strength, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::darkStrength, strength, transaction);
}
void Tesk3DEffect::SetLightDirection(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::lightDirection, degrees, transaction);
}
void Tesk3DEffect::SetLightAngle(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetLightingField(&Lighting::lightAngle, degrees, transaction);
}

namespace {

/// Everything but `useLighting`, which older files lack.
Tesk3DEffect::Lighting ReadLightingValues(ZoFolderFile& file) {
    Tesk3DEffect::Lighting l;
    l.brightness = file.ReadInt32();
    l.contrast = file.ReadInt32();
    l.lightColour = file.ReadUInt32();
    l.lightStrength = file.ReadInt32();
    l.darkColour = file.ReadUInt32();
    l.darkStrength = file.ReadInt32();
    l.lightDirection = file.ReadInt32();
    l.lightAngle = file.ReadInt32();
    return l;
}

}  // namespace

void Tesk3DEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    TeskGridEffect::Read(file);
    Lighting& lighting = GetThreeDState().lighting;
    try {
        lighting = ReadLightingValues(file);
    } catch (const ZoFileNonFatalException&) {
        lighting = Lighting{};
        return;
    }
    lighting.useLighting = TeskReadOr(true, [&] { return file.ReadBool(); });
}

void Tesk3DEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    TeskGridEffect::Write(file);
    const Lighting& l = GetLighting();
    file.WriteInt32(l.brightness);
    file.WriteInt32(l.contrast);
    file.WriteUInt32(l.lightColour);
    file.WriteInt32(l.lightStrength);
    file.WriteUInt32(l.darkColour);
    file.WriteInt32(l.darkStrength);
    file.WriteInt32(l.lightDirection);
    file.WriteInt32(l.lightAngle);
    file.WriteBool(l.useLighting);
}
