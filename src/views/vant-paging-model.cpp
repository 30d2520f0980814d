#include "views/vant-paging-model.h"

#include <limits>

VantPagingModel::VantPagingModel(int rowLimit, QObject* parent)
    : QObject(parent)
    , m_rowLimit(rowLimit)
{ }

int VantPagingModel::rowLimit() const
{
    return m_rowLimit;
}

void VantPagingModel::setRowLimit(int rowLimit)
{
    m_rowLimit = rowLimit;
}

int VantPagingModel::itemCount() const
{
    return m_itemCount;
}

void VantPagingModel::setItemCount(int itemCount)
{
    m_itemCount = itemCount;
}

int VantPagingModel::nowPage() const
{
    return m_nowPage;
}

void VantPagingModel::setNowPage(int nowPage)
{
    m_nowPage = nowPage;
}

int VantPagingModel::pageCount() const
{
    if (m_rowLimit <= 0) {
        return 1;
    }
    const int pages = m_itemCount / m_rowLimit + (m_itemCount % m_rowLimit != 0 ? 1 : 0);
    return qMax(pages, 1);
}

int VantPagingModel::startItem() const
{
    using Int = std::numeric_limits<int>;
    const qint64 item = (qint64(m_nowPage) - 1) * m_rowLimit;
    return static_cast<int>(qBound(qint64(Int::min()), item, qint64(Int::max())));
}
