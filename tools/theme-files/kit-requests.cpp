#include "kit-requests.h"

namespace {

QStringList words(const char* names)
{
    return QString::fromLatin1(names).simplified().split(QLatin1Char(' '));
}

} // namespace

namespace kitrequests {

QStringList styleKeys()
{
    return words(R"(
        component.apply_button component.button_path component.button_path_arrow
        component.button_path_change_folder_btn component.button_path_name_button component.cancel_button
        component.checkbox component.combobox component.confirm_message_box component.date_selector
        component.default_button component.filter_bar_padding component.filter_search_button
        component.icon_button component.info_message_box component.label component.lineedit
        component.lineedit_label component.menu component.message_sheet_informative_text
        component.message_sheet_other component.message_sheet_processing component.message_sheet_text
        component.nonselect_paging_button component.paging_bar_border component.paging_bar_label
        component.paging_bar_rightmost_label component.radio_button component.red_button component.scrollbar
        component.select_paging_button component.table component.table_header component.tree_item
        component.upgrading_message_box component.warning_message_box)");
}

QStringList images()
{
    return words(R"(
        app_img bg_tutorial_b bg_tutorial_l bg_tutorial_lb bg_tutorial_lt bg_tutorial_r bg_tutorial_rb
        bg_tutorial_rt bg_tutorial_t bt_next bt_pagebar_back bt_pagebar_backend bt_pagebar_next
        bt_pagebar_nextend bt_pagebar_refresh bt_search_dropdown folder icon_information icon_question
        icon_warning)");
}

bool hasFourStates(const QString& image)
{
    return image.startsWith(QLatin1String("bt_pagebar_")) || image == QLatin1String("bt_search_dropdown");
}

QStringList strings()
{
    return months() + words(R"(
        accessible_calendar accessible_calendar_next_month accessible_calendar_prev_month cancel first_page
        friday last_page monday next_5_pages ok pagebar_refresh prev_5_pages saturday sunday thursday today
        tuesday wednesday wizard_client_upgrade)");
}

QStringList months()
{
    return words(R"(
        month_jan month_feb month_mar month_apr month_may month_jun month_jul month_aug month_sep month_oct
        month_nov month_dec)");
}

QStringList fileTypes()
{
    return words(
        "acc ai audio bkpi code doc exe fla htm idn image iso pdf ppt psd swf ttf txt video xls xxx zip");
}

QStringList colours()
{
    return words("accent ground ink ink-faint ink-off on-accent panel");
}

} // namespace kitrequests
