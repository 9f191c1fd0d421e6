#include "app/object_dialog.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/app_settings.h"
#include "app/context_help.h"
#include "app/editor_app.h"
#include "app/graduated_object_child.h"
#include "app/help_topics.h"
#include "app/image_object_child.h"
#include "app/object_preview.h"
#include "app/solid_object_child.h"
#include "app/text_object_child.h"
#include "app/user_prompts.h"
#include "document/file.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"

namespace {

struct KindInfo {
    int32_t kind;
    const char* name;  // the display name, also the button's object name
    const char* helpTopic;
    const char* pageHelpTexts;  // the What's This texts of the kind's page
};

// In the order of the buttons.
constexpr KindInfo kKinds[] = {
    {kTeskImageObject, "Image", "::/html/Objects/ImageObject.htm", "::/Text/ImageObjectChild.txt"},
    {kTeskGraduatedObject, "Graduated Colour", "::/html/Objects/GraduatedObject.htm",
     "::/Text/GraduatedObjectChild.txt"},
    {kTeskTextObject, "Text", "::/html/Objects/TextObject.htm", "::/Text/TextObjectChild.txt"},
    {kTeskSolidObject, "Solid Colour", "::/html/Objects/Solid_Colour_Object.htm",
     "::/Text/SolidObjectChild.txt"},
    {kTeskNoObject, "No Object", "::/html/Objects/NullObject.htm", nullptr},
};

constexpr const char* kDialogHelpTexts = "::/Text/TeskObjectDialog.txt";

constexpr const char* kNoObjectNote =
    "There is currently no object used here. To add an object click the buttons above for the "
    "type of obejct you want - image, gradient, colour or text.";

bool IsObjectKind(int32_t kind) {
    return kind == kTeskImageObject || kind == kTeskGraduatedObject || kind == kTeskTextObject ||
           kind == kTeskSolidObject;
}

const KindInfo& InfoOf(int32_t kind) {
    for (const KindInfo& info : kKinds)
        if (info.kind == kind)
            return info;
    return kKinds[std::size(kKinds) - 1];
}

/// A small picture of each kind for its button.
QIcon KindIcon(int32_t kind) {
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box(2, 2, 28, 28);
    switch (kind) {
        case kTeskImageObject: {
            painter.fillRect(box, QColor(135, 190, 235));
            painter.setBrush(QColor(250, 210, 60));
            painter.setPen(Qt::NoPen);
            painter.drawEllipse(QPointF(22, 10), 4, 4);
            painter.setBrush(QColor(60, 140, 70));
            painter.drawPolygon(QPolygonF({{2, 30}, {12, 14}, {20, 24}, {24, 19}, {30, 30}}));
            break;
        }
        case kTeskGraduatedObject: {
            QLinearGradient gradient(box.topLeft(), box.topRight());
            gradient.setColorAt(0, Qt::blue);
            gradient.setColorAt(1, Qt::black);
            painter.fillRect(box, gradient);
            break;
        }
        case kTeskTextObject: {
            QFont font = painter.font();
            font.setPixelSize(26);
            font.setBold(true);
            painter.setFont(font);
            painter.drawText(box, Qt::AlignCenter, QStringLiteral("T"));
            break;
        }
        case kTeskSolidObject:
            painter.fillRect(box, QColor(0, 128, 128));
            break;
        default:
            painter.setPen(QPen(Qt::red, 2));
            painter.drawLine(box.bottomLeft(), box.topRight());
            break;
    }
    painter.setPen(Qt::gray);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box);
    return QIcon(pixmap);
}

ZoAutoPtr<TeskObject> NewObject(int32_t kind, const TeskObjectDialogContext& context) {
    switch (kind) {
        case kTeskImageObject:
            return std::make_unique<TeskImageObject>();
        case kTeskGraduatedObject:
            return std::make_unique<TeskGraduatedObject>();
        case kTeskTextObject:
            return std::make_unique<TeskTextObject>(context.movieBackground);
        case kTeskSolidObject:
            return std::make_unique<TeskSolidObject>();
        default:
            return nullptr;
    }
}

}  // namespace

TeskObjectDialogContext TeskObjectContextFor(TeskEditorApp& app) {
    const TeskFile& file = app.GetDocument();
    return {{file.GetWidth(), file.GetHeight()},
            file.GetBackgroundColour(),
            &app.GetSettings(),
            &app.GetHelp()};
}

TeskObjectDialog::TeskObjectDialog(const TeskObject* object, const QString& title,
                                   const TeskObjectDialogContext& context, QWidget* parent)
    : QDialog(parent), context_(context) {
    setObjectName(QStringLiteral("objectDialog"));
    setWindowTitle(title);
    setSizeGripEnabled(true);
    for (const KindInfo& info : kKinds)
        working_[info.kind] = NewObject(info.kind, context_);
    if (object && IsObjectKind(object->GetType()))
        working_[object->GetType()] = object->Clone();
    if (auto* text = dynamic_cast<TeskTextObject*>(working_[kTeskTextObject].get()))
        text->SetPageSize(context_.movieSize);

    pageArea_ = new QStackedWidget;
    pageArea_->setObjectName(QStringLiteral("pageArea"));
    note_ = new QLabel(QString::fromUtf8(kNoObjectNote));
    note_->setObjectName(QStringLiteral("noObjectNote"));
    note_->setWordWrap(true);
    note_->setAlignment(Qt::AlignCenter);
    pageArea_->addWidget(note_);
    preview_ = new TeskObjectPreview;
    preview_->setMinimumSize(160, 120);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    if (context_.help) {
        QPushButton* help = buttons->addButton(QStringLiteral("&Help"), QDialogButtonBox::HelpRole);
        help->setObjectName(QStringLiteral("help"));
        connect(help, &QPushButton::clicked, this, &TeskObjectDialog::ShowHelp);
    }

    auto* body = new QHBoxLayout;
    body->addWidget(pageArea_, 3);
    body->addWidget(preview_, 2);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeKindButtons());
    layout->addLayout(body, 1);
    layout->addWidget(buttons);

    if (context_.help)
        TeskInstallContextHelp(*this, *context_.help, kDialogHelpTexts);
    SetKind(object && IsObjectKind(object->GetType()) ? object->GetType() : kTeskNoObject);
    RestorePlacement();
}

TeskObjectDialog::~TeskObjectDialog() = default;

QWidget* TeskObjectDialog::MakeKindButtons() {
    auto* strip = new QWidget;
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* group = new QButtonGroup(this);
    for (const KindInfo& info : kKinds) {
        auto* button = new QToolButton;
        button->setObjectName(QString::fromUtf8(info.name));
        button->setText(QString::fromUtf8(info.name));
        button->setToolTip(QString::fromUtf8(info.name));
        button->setIcon(KindIcon(info.kind));
        button->setIconSize({32, 32});
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setCheckable(true);
        button->setAutoRaise(true);
        group->addButton(button, info.kind);
        layout->addWidget(button);
        kindButtons_[info.kind] = button;
    }
    layout->addStretch(1);
    connect(group, &QButtonGroup::idClicked, this, &TeskObjectDialog::SetKind);
    return strip;
}

void TeskObjectDialog::SetKind(int32_t kind) {
    if (kind != kTeskNoObject && !IsObjectKind(kind))
        return;
    currentKind_ = kind;
    kindButtons_[kind]->setChecked(true);
    pageArea_->setCurrentWidget(kind == kTeskNoObject ? note_ : PageFor(kind));
    preview_->SetObject(working_[kind].get(), context_.movieSize, context_.movieBackground);
}

QWidget* TeskObjectDialog::PageFor(int32_t kind) {
    if (pages_[kind])
        return pages_[kind];
    TeskObject& object = *working_[kind];
    auto changed = [this] { ObjectChanged(); };
    QWidget* page = nullptr;
    switch (kind) {
        case kTeskImageObject:
            page = new TeskImageObjectChild(static_cast<TeskImageObject&>(object), changed);
            break;
        case kTeskGraduatedObject:
            page = new TeskGraduatedObjectChild(static_cast<TeskGraduatedObject&>(object), changed);
            break;
        case kTeskTextObject:
            page = new TeskTextObjectChild(static_cast<TeskTextObject&>(object), context_.movieSize,
                                           changed);
            break;
        default:
            page = new TeskSolidObjectChild(static_cast<TeskSolidObject&>(object), changed);
    }
    pages_[kind] = page;
    pageArea_->addWidget(page);
    if (context_.help)
        TeskInstallContextHelp(*page, *context_.help, InfoOf(kind).pageHelpTexts);
    return page;
}

TeskObject* TeskObjectDialog::GetWorkingObject(int32_t kind) const noexcept {
    return IsObjectKind(kind) ? working_[kind].get() : nullptr;
}

ZoAutoPtr<TeskObject> TeskObjectDialog::TakeResult() {
    if (!IsObjectKind(currentKind_))
        return nullptr;
    ZoAutoPtr<TeskObject> result = std::move(working_[currentKind_]);
    // The page still edits it; give it a copy that nobody returns.
    working_[currentKind_] = result->Clone();
    return result;
}

void TeskObjectDialog::ObjectChanged() {
    preview_->ObjectChanged();
}

void TeskObjectDialog::ShowHelp() {
    if (context_.help)
        context_.help->ShowTopic(InfoOf(currentKind_).helpTopic);
}

void TeskObjectDialog::done(int result) {
    SavePlacement();
    QDialog::done(result);
}

void TeskObjectDialog::RestorePlacement() {
    if (!context_.settings)
        return;
    const TeskWindowPlacement placement =
        TeskReadWindowPlacement(*context_.settings, kSettingsSection);
    if (placement.HasGeometry())
        setGeometry(placement.x, placement.y, placement.width, placement.height);
}

void TeskObjectDialog::SavePlacement() const {
    if (!context_.settings)
        return;
    const QRect frame = geometry();
    QSettings& settings = *context_.settings;
    settings.setValue(TeskSettingKey(kSettingsSection, "Window x pos"), frame.x());
    settings.setValue(TeskSettingKey(kSettingsSection, "Window y pos"), frame.y());
    settings.setValue(TeskSettingKey(kSettingsSection, "Window width"), frame.width());
    settings.setValue(TeskSettingKey(kSettingsSection, "Window height"), frame.height());
}

bool TeskChangeObject(TeskFile& file, const std::function<bool(QDialog&)>& run,
                      const TeskObjectDialogContext& context, QWidget* parent,
                      const TeskObject* object, const QString& title,
                      std::string_view transactionName, const TeskObjectStore& store) {
    TeskObjectDialog dialog(object, title, context, parent);
    if (!run(dialog))
        return false;
    ZoAutoPtr<TeskObject> result = dialog.TakeResult();
    auto transaction = std::make_unique<TeskFile::Transaction>(transactionName);
    file.GetUndoList().Begin(transaction.get());
    store(result, transaction.get());
    file.GetUndoList().Add(transaction);
    return true;
}

bool TeskChangeObject(TeskEditorApp& app, QWidget* parent, const TeskObject* object,
                      const QString& title, std::string_view transactionName,
                      const TeskObjectStore& store) {
    return TeskChangeObject(
        app.GetDocument(), [&app](QDialog& dialog) { return app.GetPrompts().RunDialog(dialog); },
        TeskObjectContextFor(app), parent, object, title, transactionName, store);
}
