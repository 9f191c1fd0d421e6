#pragma once
// Drop-down lists whose entries stand for stored codes (the item data).
#include <initializer_list>
#include <utility>

class QComboBox;

/// A list of `entries` (text, code), in order.
QComboBox* TeskMakeCodeList(std::initializer_list<std::pair<const char*, int>> entries);
/// A list of `texts` whose codes are their positions.
QComboBox* TeskMakeIndexList(std::initializer_list<const char*> texts);
/// Selects the entry of `code`, or none when no entry has it.
void TeskShowCode(QComboBox& list, int code);
/// The code of the selected entry, or `whenNone` with no selection.
int TeskShownCode(const QComboBox& list, int whenNone);
