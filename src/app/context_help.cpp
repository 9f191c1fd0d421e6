#include "app/context_help.h"

#include <QAbstractSpinBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QTextEdit>
#include <QWhatsThis>
#include <fstream>
#include <sstream>

#include "app/help_topics.h"
#include "platform/zo_string.h"

namespace {

constexpr std::string_view kTopicMark = ".topic";

std::string_view Trim(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    const size_t last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

/// Appends one line of a topic's text: blank lines break paragraphs.
void AppendLine(std::string& text, std::string_view line) {
    if (line.empty()) {
        if (!text.empty() && !text.ends_with("\n\n"))
            text += "\n\n";
        return;
    }
    if (!text.empty() && !text.ends_with('\n'))
        text += ' ';
    text += line;
}

std::string TrimParagraphs(std::string text) {
    while (text.ends_with('\n'))
        text.pop_back();
    return text;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// The control a right click on `widget` asks about: a label stands for
/// the field it labels.
QWidget* Described(QWidget* widget) {
    if (auto* label = qobject_cast<QLabel*>(widget); label && label->buddy())
        return label->buddy();
    return widget;
}

bool HasOwnMenu(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) ||
           qobject_cast<const QAbstractSpinBox*>(widget) || qobject_cast<const QTextEdit*>(widget);
}

/// Offers "&What's This?" on a right click over a control that has a text.
class WhatsThisMenu final : public QObject {
  public:
    explicit WhatsThisMenu(QObject* parent) : QObject(parent) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ContextMenu)
            return false;
        auto* widget = static_cast<QWidget*>(watched);
        const QString text = Described(widget)->whatsThis();
        if (text.isEmpty())
            return false;
        const QPoint at = static_cast<QContextMenuEvent*>(event)->globalPos();
        QMenu menu;
        QAction* whatsThis = menu.addAction(QStringLiteral("&What's This?"));
        if (menu.exec(at) == whatsThis)
            QWhatsThis::showText(at, text, widget);
        return true;
    }
};

}  // namespace

std::map<std::string, std::string> TeskParsePopupTexts(std::string_view fileText) {
    std::map<std::string, std::string> texts;
    std::string* current = nullptr;
    while (!fileText.empty()) {
        const size_t end = fileText.find('\n');
        const std::string_view line = Trim(fileText.substr(0, end));
        fileText.remove_prefix(end == std::string_view::npos ? fileText.size() : end + 1);
        if (ZoStartsWith(line, kTopicMark)) {
            const std::string name(Trim(line.substr(kTopicMark.size())));
            current = name.empty() ? nullptr : &texts[name];
            if (current)
                current->clear();
        } else if (current) {
            AppendLine(*current, line);
        }
    }
    for (auto& [name, text] : texts)
        text = TrimParagraphs(std::move(text));
    return texts;
}

void TeskInstallContextHelp(QWidget& window, const TeskHelpViewer& help,
                            std::string_view textFile) {
    const std::map<std::string, std::string> texts =
        TeskParsePopupTexts(ReadFile(help.PageOf(textFile)));
    auto* menu = new WhatsThisMenu(&window);
    for (const auto& [name, text] : texts) {
        auto* control = window.findChild<QWidget*>(QString::fromStdString(name));
        if (!control)
            continue;
        control->setWhatsThis(QString::fromStdString(text));
        if (!HasOwnMenu(control))
            control->installEventFilter(menu);
    }
    for (QLabel* label : window.findChildren<QLabel*>()) {
        if (label->buddy() && !label->buddy()->whatsThis().isEmpty())
            label->installEventFilter(menu);
    }
    auto* shortcut = new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F1), &window);
    shortcut->setContext(Qt::WindowShortcut);
    QObject::connect(shortcut, &QShortcut::activated, [] { QWhatsThis::enterWhatsThisMode(); });
    // A window holding pages with texts of their own (the main window and its
    // property page, the object dialog and its kind's page) has one shortcut
    // per file, which Qt reports as ambiguous instead of activating either.
    QObject::connect(shortcut, &QShortcut::activatedAmbiguously,
                     [] { QWhatsThis::enterWhatsThisMode(); });
}
