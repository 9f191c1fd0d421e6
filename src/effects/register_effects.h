#pragma once
#include "effects/effect.h"

/// Registers every effect type that can be compiled, in the effect chooser's
/// order. Called once at program start; calling it again changes nothing.
void TeskRegisterEffects();
