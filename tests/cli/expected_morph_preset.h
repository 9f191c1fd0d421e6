//
// TeskMorphPreset.h
//

#ifndef __TESK_MORPH_PRESET_H__
#define __TESK_MORPH_PRESET_H__
#pragma once

static const int s_morph_preset_x_divisions = 2;
static const int s_morph_preset_y_divisions = 1;
static const double s_morph_preset_points[2][3][2][2] = {
	{
		{ { 0, 0 }, { 0, 0 } },
		{ { 0.333333, 0 }, { 0.7, 0 } },
		{ { 1, 0 }, { 1, 0 } },
	},
	{
		{ { 0, 1 }, { 0, 1 } },
		{ { 0.6, 1 }, { 0.25, 1 } },
		{ { 1, 1 }, { 1, 1 } },
	},
	};
static const bool s_morph_preset_diagonals[1][2] = {
	{true, false, },
	};
#endif
