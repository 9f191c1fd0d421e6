#pragma once
#include "effects/effect.h"
#include "platform/zo_guid.h"

/// Registers every effect type that can be compiled, in the effect chooser's
/// order. Called once at program start; calling it again changes nothing.
void TeskRegisterEffects();

/// A new default effect for a stored GUID: any registered type, or a type
/// whose settings are kept though it is not offered yet (the wave every new
/// document starts with). Null for a GUID no type has.
void TeskCreateStoredEffect(const ZoGuid& guid, ZoAutoPtr<TeskEffect>& out);
