#include "platform/controls/cell_delegate.h"

#include "platform/base/number_text.h"
#include "platform/controls/grid_model.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace zel::controls {

namespace {

/// Longer texts may lie outside of what a decimal holds, and painting must not fail.
constexpr qsizetype LongestAmount = 17;

std::optional<Decimal> amount(const QString &text) {
    return text.size() > LongestAmount ? std::nullopt : Decimal::parse(text.toStdString());
}

} // namespace

void CellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text.replace(QChar::LineSeparator, u' ');
    if (!index.data(GridModel::AmountRole).toBool())
        return;
    const std::optional<Decimal> number = amount(index.data().toString());
    if (!number)
        return;
    option->text = shownAmount(*number);
    if (*number < Decimal())
        option->palette.setColor(QPalette::Text, QColor(0xb3, 0x26, 0x1e));
}

bool CellDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                             const QModelIndex &index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const bool cut = sizeHint(option, index).width() > option.rect.width();
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    // As rich text it is broken into lines that the screen has room for.
    QToolTip::showText(event->globalPos(),
                       cut ? QStringLiteral("<p>%1</p>").arg(shown.text.toHtmlEscaped()) : QString(), view);
    return true;
}

} // namespace zel::controls
