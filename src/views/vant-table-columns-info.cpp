#include "views/vant-table-columns-info.h"

VantTableColumnsInfo::VantTableColumnsInfo() = default;

int VantTableColumnsInfo::addColumn(const QString& title, int width, bool resizable, double ratio)
{
    const int index = static_cast<int>(columns.size());
    columns.push_back({ title, width, resizable, ratio });
    return index;
}
