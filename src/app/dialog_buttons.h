#pragma once
#include <QDialogButtonBox>
#include <string_view>

class TeskHelpViewer;

/// The buttons every editor dialog ends with: accept (OK, or `acceptText`),
/// Cancel, and a help button labelled `helpText` that opens `topic`.
QDialogButtonBox* TeskMakeDialogButtons(QDialog& dialog, TeskHelpViewer& help,
                                        std::string_view topic, const char* helpText,
                                        const char* acceptText = nullptr);
