#pragma once
// What's This help: a short popup text for one control, from a text file of
// the help pages. Each window names its file ("::/Text/PublishDialog.txt");
// inside it, ".topic NAME" starts the text of the control whose object name
// is NAME, which runs to the next ".topic" line.
#include <map>
#include <string>
#include <string_view>

class QWidget;
class TeskHelpViewer;

/// The texts of a popup text file by control name, each trimmed, with its
/// lines joined by spaces and blank lines kept as paragraph breaks.
std::map<std::string, std::string> TeskParsePopupTexts(std::string_view fileText);

/// Gives each control of `window` named in `textFile` its text: Shift+F1
/// (What's This mode) or a right click on it offering "&What's This?" shows
/// it. A label shows the text of the field it labels. Fields that edit text
/// keep their own right-click menu. A missing file gives no texts.
void TeskInstallContextHelp(QWidget& window, const TeskHelpViewer& help, std::string_view textFile);
