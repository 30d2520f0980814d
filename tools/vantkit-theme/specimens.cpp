#include "specimens.h"

#include <vantkit-qt/vantkit.h>

#include <QLabel>
#include <QLineEdit>

namespace {

const std::vector<Look> buttonLooks { Look::Rest, Look::Hover, Look::Pressed, Look::Focus, Look::Disabled };
const std::vector<Look> fieldLooks { Look::Rest, Look::Hover, Look::Focus, Look::Error, Look::ErrorFocus,
    Look::Disabled };
const std::vector<Look> choiceLooks { Look::Rest, Look::Hover, Look::Focus, Look::Disabled };
const std::vector<Look> labelLooks { Look::Rest, Look::Disabled };

int px(int designPixels)
{
    return static_cast<int>(designPixels * DPIinfo::getInstance().getDPI());
}

Specimen button(const char* key, int kind, const QString& text)
{
    return { QLatin1String(key), [kind, text] { return new VantButton(text, kind); }, buttonLooks };
}

Specimen pageButton(const char* key, int kind)
{
    return { QLatin1String(key),
        [kind] {
            auto* page = new VantButton(QStringLiteral("3"), kind);
            page->setFixedHeight(px(27));
            page->setMinimumWidth(px(28));
            return page;
        },
        buttonLooks };
}

Specimen iconButton(const char* image)
{
    return { QStringLiteral("component.icon_button, %1").arg(QLatin1String(image)),
        [image] { return new VantIconButton(QString::fromLatin1(image)); }, buttonLooks };
}

template <typename Box>
Specimen box(const QString& name, Qt::CheckState state)
{
    return { name,
        [state] {
            auto* made = new Box(QStringLiteral("Keep a copy"), nullptr);
            if constexpr (std::is_same_v<Box, VantCheckBox>) {
                made->setCheckState(state);
            } else {
                made->setChecked(state == Qt::Checked);
            }
            return made;
        },
        buttonLooks };
}

QWidget* field(const QString& style, int width)
{
    auto* edit = new QLineEdit(QStringLiteral("Quarterly report"));
    edit->setStyleSheet(style);
    edit->setFixedSize(px(width), px(28));
    return edit;
}

QWidget* lineEdit()
{
    auto* edit = new VantLineEdit;
    edit->setSpacing(8);
    edit->getPreLabel()->setText(QStringLiteral("Keep"));
    edit->getLineEdit()->setText(QStringLiteral("30"));
    edit->getLineEdit()->setFixedWidth(px(80));
    edit->getPostLabel()->setText(QStringLiteral("days"));
    return edit;
}

QWidget* filterBar()
{
    auto* bar = new VantFilterBar;
    bar->setText(QStringLiteral("Quarterly report"));
    bar->setFixedWidth(px(180));
    return bar;
}

Specimen label(const char* key, const QString& text, const std::vector<Look>& looks)
{
    return { QLatin1String(key),
        [key, text] {
            auto* made = new QLabel(text);
            made->setStyleSheet(getStyleSheet(key, false));
            return made;
        },
        looks };
}

} // namespace

Specimens buttonSpecimens()
{
    return {
        button("component.apply_button", 0, QStringLiteral("Save changes")),
        button("component.cancel_button", 1, QStringLiteral("Cancel")),
        button("component.default_button", 4, QStringLiteral("Browse")),
        button("component.red_button", 5, QStringLiteral("Delete")),
        iconButton("bt_pagebar_refresh"),
        iconButton("bt_search_dropdown"),
    };
}

Specimens inputSpecimens()
{
    const QString checkBox = QStringLiteral("component.checkbox");
    const QString radio = QStringLiteral("component.radio_button");
    return {
        box<VantCheckBox>(checkBox, Qt::Unchecked),
        box<VantCheckBox>(checkBox + QStringLiteral(", checked"), Qt::Checked),
        box<VantCheckBox>(checkBox + QStringLiteral(", partly"), Qt::PartiallyChecked),
        box<VantRadioButton>(radio, Qt::Unchecked),
        box<VantRadioButton>(radio + QStringLiteral(", checked"), Qt::Checked),
    };
}

Specimens fieldSpecimens()
{
    const Specimen combo { QStringLiteral("component.combobox"),
        [] {
            auto* made = new VantComboBox(nullptr);
            made->addItem(QStringLiteral("Every day"));
            made->setFixedWidth(px(140));
            return made;
        },
        choiceLooks };
    const Specimen date { QStringLiteral("component.date_selector"),
        [] {
            auto* made = new QComboBox;
            made->addItem(QStringLiteral("2017-03-09"));
            made->setFixedSize(px(140), px(32));
            made->setStyleSheet(getStyleSheet("component.date_selector", false));
            return made;
        },
        choiceLooks };
    return {
        { QStringLiteral("component.lineedit,\ncomponent.lineedit_label"), lineEdit, fieldLooks },
        { QStringLiteral("component.filter_bar_padding,\ncomponent.filter_search_button"), filterBar,
            fieldLooks },
        { QStringLiteral("component.tree_item"),
            [] { return field(getStyleSheet("component.tree_item", false), 140); }, { Look::Rest } },
        combo,
        date,
    };
}

Specimens labelSpecimens()
{
    return {
        label("component.label", QStringLiteral("Backed up every day at noon"), labelLooks),
        label("component.lineedit_label", QStringLiteral("Folder name"), labelLooks),
        label("component.message_sheet_text", QStringLiteral("Delete this backup?"), { Look::Rest }),
        label("component.message_sheet_informative_text", QStringLiteral("It cannot be brought back."),
            { Look::Rest }),
        label("component.paging_bar_label", QStringLiteral("128 items"), labelLooks),
        label("component.paging_bar_rightmost_label", QStringLiteral("128 items"), labelLooks),
    };
}

Specimens pagingSpecimens()
{
    return {
        pageButton("component.select_paging_button", 2),
        pageButton("component.nonselect_paging_button", 3),
        iconButton("bt_pagebar_backend"),
        iconButton("bt_pagebar_back"),
        iconButton("bt_pagebar_next"),
        iconButton("bt_pagebar_nextend"),
    };
}

Specimens pathSpecimens()
{
    return {
        { QStringLiteral("component.button_path_name_button"),
            [] {
                auto* made = new QPushButton(QStringLiteral("Documents"));
                made->setFlat(true);
                made->setStyleSheet(getStyleSheet("component.button_path_name_button", false));
                made->setFixedSize(px(90), px(26));
                return made;
            },
            buttonLooks },
        { QStringLiteral("component.button_path_change_folder_btn"),
            [] {
                auto* made = new QToolButton;
                made->setIcon(getGlobalImage("folder", ImageManager::Normal));
                made->setIconSize({ 20, 20 });
                made->setStyleSheet(getStyleSheet("component.button_path_change_folder_btn", false));
                made->setFocusPolicy(Qt::StrongFocus);
                made->setFixedSize(px(26), px(26));
                return made;
            },
            buttonLooks },
    };
}
