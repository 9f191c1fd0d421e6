#include "app/pages/page_lists.h"

#include <QComboBox>

QComboBox* TeskMakeCodeList(std::initializer_list<std::pair<const char*, int>> entries) {
    auto* list = new QComboBox;
    for (const auto& [text, code] : entries)
        list->addItem(QString::fromUtf8(text), code);
    return list;
}

QComboBox* TeskMakeIndexList(std::initializer_list<const char*> texts) {
    auto* list = new QComboBox;
    int code = 0;
    for (const char* text : texts)
        list->addItem(QString::fromUtf8(text), code++);
    return list;
}

void TeskShowCode(QComboBox& list, int code) {
    list.setCurrentIndex(list.findData(code));
}

int TeskShownCode(const QComboBox& list, int whenNone) {
    return list.currentIndex() < 0 ? whenNone : list.currentData().toInt();
}
