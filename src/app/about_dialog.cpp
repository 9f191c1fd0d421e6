#include "app/about_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QSysInfo>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "app/support_mail.h"

namespace {

constexpr const char* kWebSite = "https://vimbo.kestrane.com/";

QWidget* MakeCredits() {
    auto* label = new QLabel(QStringLiteral(
        "<h2>Vimbo</h2><p>Turns a short transition between two pictures, texts or colours "
        "into a Flash movie and a web page.</p><p>Made by Kestrane.</p>"
        "<p>Built with Qt, FreeType, Cairo, libpng, libjpeg-turbo, giflib and zlib.</p>"));
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    label->setMargin(12);
    return label;
}

QWidget* MakeSystemInfo() {
    auto* list = new QTreeWidget;
    list->setObjectName(QStringLiteral("systemInfo"));
    list->setColumnCount(2);
    list->setHeaderLabels({QStringLiteral("Item"), QStringLiteral("Value")});
    list->setRootIsDecorated(false);
    const std::pair<const char*, QString> rows[] = {
        {"Version", QString::fromStdString(TeskVersionText())},
        {"Build Date", QString::fromStdString(TeskBuildDateText())},
        {"Build Type", QString::fromStdString(TeskBuildTypeText())},
        {"Operating System", QSysInfo::prettyProductName()},
        {"Qt", QString::fromUtf8(qVersion())},
    };
    for (const auto& [item, value] : rows)
        list->addTopLevelItem(new QTreeWidgetItem({QString::fromUtf8(item), value}));
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    return list;
}

}  // namespace

TeskAboutDialog::TeskAboutDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("About Vimbo"));
    auto* tabs = new QTabWidget;
    tabs->addTab(MakeCredits(), QStringLiteral("Credits"));
    tabs->addTab(MakeSystemInfo(), QStringLiteral("System Information"));
    auto* link = new QLabel(QStringLiteral("<a href=\"%1\">%1</a>").arg(QLatin1String(kWebSite)));
    link->setOpenExternalLinks(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(link);
    layout->addWidget(buttons);
    resize(420, 300);
}
