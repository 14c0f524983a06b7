#include "platform/controls/look_style.h"

#include "platform/controls/look.h"

#include <QMdiArea>
#include <QPainter>
#include <QStyleOption>

namespace zel::controls {

namespace {

void drawRing(const QRect &around, QPainter *painter) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(LookStyle::accent(), 2));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(around).adjusted(1, 1, -1, -1), 2.5, 2.5);
    painter->restore();
}

/// Whole lines inside the widget: a pen's line would lie half outside of it, and at 150% all of it.
void drawFrame(const QStyleOption &option, QPainter *painter) {
    const QRect all = option.rect;
    const QColor color = option.palette.window().color().darker(140).lighter(108);
    painter->fillRect(all.left(), all.top(), all.width(), 1, color);
    painter->fillRect(all.left(), all.bottom(), all.width(), 1, color);
    painter->fillRect(all.left(), all.top(), 1, all.height(), color);
    painter->fillRect(all.right(), all.top(), 1, all.height(), color);
}

bool hasFocus(const QStyleOption *option) {
    return option->state.testFlag(QStyle::State_HasFocus) && option->state.testFlag(QStyle::State_Enabled);
}

} // namespace

LookStyle::LookStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const {
    if (element == PE_FrameFocusRect) {
        // Rows of a grid or a tree show where they are by their selection alone.
        if (!widget || !widget->inherits("QAbstractItemView"))
            drawRing(option->rect, painter);
        return;
    }
    if (element == PE_Frame && widget && widget->inherits("QAbstractScrollArea"))
        return drawFrame(*option, painter);
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_FrameLineEdit || element == PE_PanelLineEdit;
    const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
    if (box && hasFocus(option) && frame && frame->lineWidth > 0)
        drawRing(option->rect, painter);
}

void LookStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const {
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ShapedFrame && widget && widget->hasFocus() && widget->inherits("QAbstractScrollArea"))
        drawRing(option->rect, painter);
    if (element == CE_PushButton && hasFocus(option))
        drawRing(option->rect, painter);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if ((control == CC_ComboBox || control == CC_SpinBox) && hasFocus(option))
        drawRing(option->rect, painter);
}

QIcon LookStyle::standardIcon(StandardPixmap standard, const QStyleOption *option,
                              const QWidget *widget) const {
    switch (standard) {
    case SP_MessageBoxInformation:
        return icon(QStringLiteral("information"));
    case SP_MessageBoxCritical:
        return icon(QStringLiteral("critical"));
    case SP_MessageBoxQuestion:
        return icon(QStringLiteral("question"));
    default:
        return QProxyStyle::standardIcon(standard, option, widget);
    }
}

void LookStyle::polish(QWidget *widget) {
    QProxyStyle::polish(widget);
    if (auto *area = qobject_cast<QMdiArea *>(widget))
        area->setBackground(QColor(0xd9, 0xe0, 0xe8));
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const {
    switch (metric) {
    case PM_ButtonIconSize:
        return 18;
    case PM_SmallIconSize:
        return 18;
    case PM_FocusFrameHMargin: // between a cell's edge and its text
        return 5;
    case PM_LayoutHorizontalSpacing:
        return 8;
    case PM_LayoutVerticalSpacing:
        return 7;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                         QStyleHintReturn *data) const {
    switch (hint) {
    case SH_FormLayoutLabelAlignment:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    case SH_LineEdit_PasswordCharacter:
        return '*';
    case SH_UnderlineShortcut:
        return 1;
    case SH_ItemView_ShowDecorationSelected:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

} // namespace zel::controls
