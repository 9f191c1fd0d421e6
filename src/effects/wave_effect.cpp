#include "effects/wave_effect.h"

#include "objects/field_visitor.h"
#include "objects/image_object.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

TeskWaveEffect::WaveState::WaveState()
    : object(std::make_unique<TeskImageObject>("<PreviewImage1>")) {}

TeskWaveEffect::WaveState::WaveState(const WaveState& other)
    : ThreeDState(other),
      object(TeskCloneObject(other.object)),
      wavelength(other.wavelength),
      amplitude(other.amplitude),
      direction(other.direction),
      waveStyle(other.waveStyle) {}

ZoAutoPtr<TeskEffect::State> TeskWaveEffect::WaveState::Clone() const {
    return std::make_unique<WaveState>(*this);
}

void TeskWaveEffect::WaveState::VisitFields(TeskFieldVisitor& visitor) {
    ThreeDState::VisitFields(visitor);
    visitor.Object("object", object);
    visitor.Field("wavelength", wavelength);
    visitor.Field("amplitude", amplitude);
    visitor.Field("direction", direction);
    visitor.Field("waveStyle", waveStyle);
}

TeskWaveEffect::TeskWaveEffect() : Tesk3DEffect(std::make_unique<WaveState>()) {}

const TeskEffectInfo& TeskWaveEffect::Info() {
    static const TeskEffectInfo info{
        *ZoGuid::Parse("{8859A138-2D10-4985-B2D1-B3374EA20129}"),
        []() -> ZoAutoPtr<TeskEffect> { return std::make_unique<TeskWaveEffect>(); },
        135,
        "Wave",
        4,
        "::/html/Effects/WaveEffect.htm",
    };
    return info;
}

void TeskWaveEffect::SetWaveObject(ZoAutoPtr<TeskObject>& object,
                                   ZoEditor::ZoEditTransaction* transaction) {
    SetObject(object, 0, transaction);
}
void TeskWaveEffect::SetWavelength(int32_t wavelength, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&WaveState::wavelength, wavelength, transaction);
}
void TeskWaveEffect::SetAmplitude(int32_t amplitude, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&WaveState::amplitude, amplitude, transaction);
}
void TeskWaveEffect::SetDirection(int32_t degrees, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&WaveState::direction, degrees, transaction);
}
void TeskWaveEffect::SetWaveStyle(int32_t style, ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&WaveState::waveStyle, style, transaction);
}

void TeskWaveEffect::Compile(TeskSWFMovie&, bool) {
    throw ZoException("The wave effect cannot be compiled in this version");
}

void TeskWaveEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    try {
        Tesk3DEffect::Read(file);
        WaveState& state = static_cast<WaveState&>(GetState());
        ReadObject(file, state.object);
        state.wavelength = file.ReadInt32();
        state.amplitude = file.ReadInt32();
        state.direction = file.ReadInt32();
        state.waveStyle = file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        ResetState();
    }
}

void TeskWaveEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    Tesk3DEffect::Write(file);
    const WaveState& state = GetWaveState();
    WriteObject(file, state.object.get());
    for (int32_t value : {state.wavelength, state.amplitude, state.direction, state.waveStyle})
        file.WriteInt32(value);
}

ZoAutoPtr<TeskObject>& TeskWaveEffect::ObjectSlot(State& state, int) const {
    return static_cast<WaveState&>(state).object;
}
