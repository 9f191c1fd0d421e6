#include "app/text_object_child.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFontComboBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/colour_button.h"
#include "app/rich_text_edit.h"
#include "objects/text_object.h"

namespace {

constexpr int kPointSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 28, 36, 48, 72};
constexpr int kLargestPointSize = 1000;

struct AlignmentButton {
    const char* name;
    const char* text;
    const char* tip;
    int id;
};

constexpr AlignmentButton kAlignments[] = {
    {"alignLeft", "\u2261L", "Align Left", Qt::AlignLeft},
    {"alignCentre", "\u2261C", "Centre", Qt::AlignHCenter},
    {"alignRight", "\u2261R", "Align Right", Qt::AlignRight},
    {"alignJustify", "\u2261J", "Justify", Qt::AlignJustify},
};

constexpr AlignmentButton kVerticalAlignments[] = {
    {"verticalTop", "\u2912", "Vertical Top", int(ZoVerticalAlignment::Top)},
    {"verticalCentre", "\u2195", "Vertical Centre", int(ZoVerticalAlignment::Centre)},
    {"verticalBottom", "\u2913", "Vertical Bottom", int(ZoVerticalAlignment::Bottom)},
    {"verticalJustify", "\u21d5", "Vertical Justify", int(ZoVerticalAlignment::Justify)},
};

QButtonGroup* AddButtonGroup(QWidget* bar, const AlignmentButton (&buttons)[4]) {
    auto* group = new QButtonGroup(bar);
    for (const AlignmentButton& entry : buttons) {
        auto* button = new QToolButton;
        button->setObjectName(QString::fromUtf8(entry.name));
        button->setText(QString::fromUtf8(entry.text));
        button->setToolTip(QString::fromUtf8(entry.tip));
        button->setCheckable(true);
        button->setAutoRaise(true);
        group->addButton(button, entry.id);
        bar->layout()->addWidget(button);
    }
    return group;
}

}  // namespace

TeskTextObjectChild::TeskTextObjectChild(TeskTextObject& object, ZoSize page,
                                         std::function<void()> changed, QWidget* parent)
    : QWidget(parent), object_(object), changed_(std::move(changed)) {
    setObjectName(QStringLiteral("textPage"));
    editor_ = new TeskRichTextEdit;
    // Lines break where the movie's text will break.
    editor_->setLineWrapMode(QTextEdit::FixedPixelWidth);
    editor_->setLineWrapColumnOrWidth(std::max(page.cx, 1));
    TeskRichTextToDocument(object.GetRichText(), *editor_->document());
    editor_->setCurrentCharFormat(editor_->document()->begin().charFormat());

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(MakeFontBar());
    layout->addWidget(MakeStyleBar());
    layout->addWidget(editor_, 1);

    connect(editor_, &QTextEdit::textChanged, this, &TeskTextObjectChild::TextChanged);
    connect(editor_, &QTextEdit::cursorPositionChanged, this, &TeskTextObjectChild::ShowFormat);
    connect(editor_, &QTextEdit::currentCharFormatChanged, this, &TeskTextObjectChild::ShowFormat);
    ShowFormat();
}

QWidget* TeskTextObjectChild::MakeFontBar() {
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    fontName_ = new QFontComboBox;
    fontName_->setObjectName(QStringLiteral("fontName"));
    fontName_->setToolTip(QStringLiteral("Font Name"));
    pointSize_ = new QComboBox;
    pointSize_->setObjectName(QStringLiteral("pointSize"));
    pointSize_->setToolTip(QStringLiteral("Font Point Size"));
    pointSize_->setEditable(true);
    pointSize_->setValidator(new QIntValidator(1, kLargestPointSize, pointSize_));
    for (int size : kPointSizes)
        pointSize_->addItem(QString::number(size));
    colour_ = new TeskColourButton(0);
    colour_->setObjectName(QStringLiteral("fontColour"));
    colour_->setToolTip(QStringLiteral("Font Colour"));
    backColour_ = new TeskColourButton(object_.GetBackColour(), nullptr, true);
    backColour_->setObjectName(QStringLiteral("backColour"));
    backColour_->setToolTip(QStringLiteral("Text Background Colour"));
    layout->addWidget(fontName_, 1);
    layout->addWidget(pointSize_);
    layout->addWidget(colour_);
    layout->addWidget(backColour_);

    connect(fontName_, &QFontComboBox::currentFontChanged, this, [this](const QFont& font) {
        QTextCharFormat change;
        change.setFontFamilies({font.family()});
        MergeFormat(change);
    });
    connect(pointSize_, &QComboBox::textActivated, this, [this](const QString& text) {
        if (text.toInt() <= 0)
            return;
        QTextCharFormat change;
        change.setFontPointSize(text.toInt());
        MergeFormat(change);
    });
    connect(colour_, &TeskColourButton::colourChosen, this, [this](COLORREF colour) {
        QTextCharFormat change;
        change.setForeground(TeskToQColor(colour));
        MergeFormat(change);
    });
    connect(backColour_, &TeskColourButton::colourChosen, this, [this](COLORREF colour) {
        object_.SetBackColour(colour);
        changed_();
    });
    return bar;
}

QToolButton* TeskTextObjectChild::AddToggle(QWidget* bar, const char* name, const QString& text,
                                            const char* tip) {
    auto* button = new QToolButton;
    button->setObjectName(QString::fromUtf8(name));
    button->setText(text);
    button->setToolTip(QString::fromUtf8(tip));
    button->setCheckable(true);
    button->setAutoRaise(true);
    bar->layout()->addWidget(button);
    return button;
}

QWidget* TeskTextObjectChild::MakeStyleBar() {
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    bold_ = AddToggle(bar, "bold", QStringLiteral("B"), "Bold");
    italic_ = AddToggle(bar, "italic", QStringLiteral("I"), "Italic");
    underline_ = AddToggle(bar, "underline", QStringLiteral("U"), "Underline");
    subscript_ = AddToggle(bar, "subscript", QStringLiteral("x\u2082"), "Subscript");
    superscript_ = AddToggle(bar, "superscript", QStringLiteral("x\u00b2"), "Superscript");
    QFont font = bold_->font();
    font.setBold(true);
    bold_->setFont(font);
    font = italic_->font();
    font.setItalic(true);
    italic_->setFont(font);
    font = underline_->font();
    font.setUnderline(true);
    underline_->setFont(font);
    layout->addSpacing(8);
    alignment_ = AddButtonGroup(bar, kAlignments);
    layout->addSpacing(8);
    verticalAlignment_ = AddButtonGroup(bar, kVerticalAlignments);
    layout->addStretch(1);

    connect(bold_, &QToolButton::clicked, this, [this](bool on) {
        QTextCharFormat change;
        change.setFontWeight(on ? QFont::Bold : QFont::Normal);
        MergeFormat(change);
    });
    connect(italic_, &QToolButton::clicked, this, [this](bool on) {
        QTextCharFormat change;
        change.setFontItalic(on);
        MergeFormat(change);
    });
    connect(underline_, &QToolButton::clicked, this, [this](bool on) {
        QTextCharFormat change;
        change.setFontUnderline(on);
        MergeFormat(change);
    });
    auto script = [this](QTextCharFormat::VerticalAlignment alignment, bool on) {
        QTextCharFormat change;
        change.setVerticalAlignment(on ? alignment : QTextCharFormat::AlignNormal);
        MergeFormat(change);
    };
    connect(subscript_, &QToolButton::clicked, this,
            [script](bool on) { script(QTextCharFormat::AlignSubScript, on); });
    connect(superscript_, &QToolButton::clicked, this,
            [script](bool on) { script(QTextCharFormat::AlignSuperScript, on); });
    connect(alignment_, &QButtonGroup::idClicked, this, [this](int id) {
        editor_->setAlignment(Qt::Alignment(id));
        editor_->setFocus();
    });
    connect(verticalAlignment_, &QButtonGroup::idClicked, this, [this](int id) {
        object_.SetVerticalAlignment(static_cast<ZoVerticalAlignment>(id));
        changed_();
    });
    return bar;
}

void TeskTextObjectChild::MergeFormat(const QTextCharFormat& change) {
    editor_->mergeCurrentCharFormat(change);
    editor_->setFocus();
}

void TeskTextObjectChild::ShowFormat() {
    const QTextCharFormat format = editor_->currentCharFormat();
    const QSignalBlocker quietFont(fontName_);
    const QSignalBlocker quietSize(pointSize_);
    fontName_->setCurrentFont(format.font());
    pointSize_->setEditText(QString::number(std::lround(format.fontPointSize())));
    colour_->SetColour(TeskFromQColor(format.foreground().color()));
    bold_->setChecked(format.fontWeight() >= QFont::DemiBold);
    italic_->setChecked(format.fontItalic());
    underline_->setChecked(format.fontUnderline());
    subscript_->setChecked(format.verticalAlignment() == QTextCharFormat::AlignSubScript);
    superscript_->setChecked(format.verticalAlignment() == QTextCharFormat::AlignSuperScript);
    const Qt::Alignment horizontal = editor_->alignment() & Qt::AlignHorizontal_Mask;
    for (QAbstractButton* button : alignment_->buttons())
        button->setChecked(horizontal & Qt::Alignment(alignment_->id(button)));
    if (QAbstractButton* vertical = verticalAlignment_->button(int(object_.GetVerticalAlignment())))
        vertical->setChecked(true);
}

void TeskTextObjectChild::TextChanged() {
    TeskDocumentToRichText(*editor_->document(), object_.GetRichText());
    changed_();
}
