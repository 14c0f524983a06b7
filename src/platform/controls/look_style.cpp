#include "platform/controls/look_style.h"

#include "platform/controls/look.h"

#include <QAbstractSpinBox>
#include <QEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <vector>

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

QRectF square(const QRect &around, qreal side) {
    QRectF result(0, 0, side, side);
    result.moveCenter(QRectF(around).center());
    return result;
}

void drawSign(QStyle::SubControl button, const QRect &place, QPainter *painter) {
    const QRectF box = square(place, 9);
    switch (button) {
    case QStyle::SC_TitleBarMinButton:
        painter->drawLine(box.bottomLeft(), box.bottomRight());
        break;
    case QStyle::SC_TitleBarMaxButton:
        painter->drawRect(box);
        break;
    case QStyle::SC_TitleBarNormalButton:
        painter->drawRect(box.adjusted(0, 2.5, -2.5, 0));
        painter->drawPolyline(QPolygonF{{box.left() + 2.5, box.top() + 2.5},
                                        {box.left() + 2.5, box.top()},
                                        box.topRight(),
                                        {box.right(), box.bottom() - 2.5},
                                        {box.right() - 2.5, box.bottom() - 2.5}});
        break;
    default:
        painter->drawLine(box.topLeft(), box.bottomRight());
        painter->drawLine(box.topRight(), box.bottomLeft());
    }
}

/// The buttons that the window offers in its present state.
QStyle::SubControls offered(const QStyleOptionTitleBar &bar) {
    QStyle::SubControls buttons;
    const bool minimized = bar.titleBarState & Qt::WindowMinimized;
    const bool maximized = bar.titleBarState & Qt::WindowMaximized;
    if ((bar.titleBarFlags & Qt::WindowMinimizeButtonHint) && !minimized)
        buttons |= QStyle::SC_TitleBarMinButton;
    if ((bar.titleBarFlags & Qt::WindowMaximizeButtonHint) && !maximized)
        buttons |= QStyle::SC_TitleBarMaxButton;
    if (minimized || maximized)
        buttons |= QStyle::SC_TitleBarNormalButton;
    if (bar.titleBarFlags & Qt::WindowSystemMenuHint)
        buttons |= QStyle::SC_TitleBarCloseButton;
    return buttons & bar.subControls;
}

/// Flat, the active screen's in the colour of the logo.
void drawTitleBar(const QStyle &style, const QStyleOptionTitleBar &bar, QPainter *painter,
                  const QWidget *widget) {
    const bool active = bar.titleBarState & QStyle::State_Active;
    const QColor text = active ? QColor(Qt::white) : QColor(0x4d, 0x5a, 0x68);
    const auto place = [&](QStyle::SubControl part) {
        return style.subControlRect(QStyle::CC_TitleBar, &bar, part, widget);
    };
    painter->save();
    painter->fillRect(bar.rect, active ? LookStyle::titleBar() : QColor(0xc9, 0xd2, 0xdc));
    if (bar.subControls & QStyle::SC_TitleBarSysMenu)
        bar.icon.paint(painter, square(place(QStyle::SC_TitleBarSysMenu), 16).toRect());
    QFont bold = painter->font();
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(text);
    const QRect label = place(QStyle::SC_TitleBarLabel).adjusted(6, 0, -6, 0);
    painter->drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      QFontMetrics(bold).elidedText(bar.text, Qt::ElideRight, label.width()));
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(text, 1.4));
    painter->setBrush(Qt::NoBrush);
    for (const auto button : {QStyle::SC_TitleBarMinButton, QStyle::SC_TitleBarMaxButton,
                              QStyle::SC_TitleBarNormalButton, QStyle::SC_TitleBarCloseButton}) {
        if (!(offered(bar) & button))
            continue;
        if ((bar.activeSubControls & button) && (bar.state & QStyle::State_MouseOver))
            painter->fillRect(place(button), QColor(0x80, 0x95, 0xab, 0x90));
        drawSign(button, place(button), painter);
    }
    painter->restore();
}

/// Fusion caches the panels that it paints under the palette's number, which differs between widgets of the
/// same colours; and what was cached for a screen that is gone is never quite forgotten. So like palettes
/// become the same one.
void sharePalette(const QStyleOption *option) {
    static std::vector<QPalette> known;
    constexpr std::size_t Most = 32;
    QPalette &palette = const_cast<QStyleOption *>(option)->palette;
    const auto same = std::ranges::find(known, palette);
    if (same != known.end()) {
        const QPalette::ColorGroup group = palette.currentColorGroup();
        palette = *same;
        palette.setCurrentColorGroup(group);
    } else if (known.size() < Most) {
        known.push_back(palette);
    }
}

/// A box that is read only is grey inside.
void greyReadOnly(QPalette::ColorRole inside, const QStyleOption *option, const QWidget *widget) {
    const auto *box = qobject_cast<const QAbstractSpinBox *>(widget);
    if (option->state.testFlag(QStyle::State_ReadOnly) || (box && box->isReadOnly()))
        const_cast<QStyleOption *>(option)->palette.setColor(inside, LookStyle::readOnlyBase());
}

bool hasFocus(const QStyleOption *option) {
    return option->state.testFlag(QStyle::State_HasFocus) && option->state.testFlag(QStyle::State_Enabled);
}

} // namespace

LookStyle::LookStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const {
    if (element == PE_PanelLineEdit)
        greyReadOnly(QPalette::Base, option, widget);
    sharePalette(option);
    if (element == PE_FrameFocusRect) {
        // Rows of a grid or a tree show where they are by their selection alone.
        if (!widget || !widget->inherits("QAbstractItemView"))
            drawRing(option->rect, painter);
        return;
    }
    if (element == PE_PanelTipLabel) {
        painter->fillRect(option->rect, QColor(0xc9, 0xbd, 0x8a));
        painter->fillRect(option->rect.adjusted(1, 1, -1, -1), option->palette.toolTipBase());
        return;
    }
    if (element == PE_Frame && widget && widget->inherits("QAbstractScrollArea"))
        return drawFrame(*option, painter);
    if (element == PE_IndicatorBranch && option->state.testFlag(State_Selected)) {
        QStyleOption shown = *option;
        shown.palette.setColor(QPalette::WindowText, option->palette.color(QPalette::HighlightedText));
        return QProxyStyle::drawPrimitive(element, &shown, painter, widget);
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_FrameLineEdit || element == PE_PanelLineEdit;
    const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
    if (box && hasFocus(option) && frame && frame->lineWidth > 0)
        drawRing(option->rect, painter);
}

void LookStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const {
    sharePalette(option);
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (element == CE_MenuBarItem && item && item->state.testFlag(State_Selected) && widget &&
        widget->hasFocus()) {
        // Reached by the keyboard it looks as it does with its menu open.
        QStyleOptionMenuItem shown = *item;
        shown.state |= State_Sunken;
        return QProxyStyle::drawControl(element, &shown, painter, widget);
    }
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_TabBarTab && option->state.testFlag(State_Selected) && widget && widget->hasFocus())
        drawRing(option->rect.adjusted(2, 2, -2, -2), painter);
    if (element == CE_ShapedFrame && widget && widget->hasFocus() && widget->inherits("QAbstractScrollArea"))
        drawRing(option->rect, painter);
    if (element == CE_PushButton && hasFocus(option))
        drawRing(option->rect, painter);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const {
    if (control == CC_ComboBox)
        greyReadOnly(QPalette::Button, option, widget);
    sharePalette(option);
    const auto *bar = qstyleoption_cast<const QStyleOptionTitleBar *>(option);
    if (control == CC_TitleBar && bar)
        return drawTitleBar(*proxy(), *bar, painter, widget);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if ((control == CC_ComboBox || control == CC_SpinBox) && hasFocus(option))
        drawRing(option->rect, painter);
}

/// A caption that ends in a blank lines up with those that don't.
void LookStyle::drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette,
                             bool enabled, const QString &text, QPalette::ColorRole role) const {
    QString shown = text;
    while ((flags & Qt::AlignRight) && shown.endsWith(QLatin1Char(' ')))
        shown.chop(1);
    QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, shown, role);
}

QIcon LookStyle::standardIcon(StandardPixmap standard, const QStyleOption *option,
                              const QWidget *widget) const {
    switch (standard) {
    case SP_MessageBoxInformation:
        return icon(QStringLiteral("information"));
    case SP_MessageBoxCritical:
        return icon(QStringLiteral("critical"));
    default: {
        QIcon &known = m_standardIcons[standard];
        if (known.isNull())
            known = QProxyStyle::standardIcon(standard, option, widget);
        return known;
    }
    }
}

/// Tinted by the selection's colour, as other styles do it, an icon would vanish in the selection.
QPixmap LookStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                       const QStyleOption *option) const {
    return mode == QIcon::Selected ? pixmap : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

void LookStyle::polish(QWidget *widget) {
    QProxyStyle::polish(widget);
    if (auto *area = qobject_cast<QMdiArea *>(widget))
        area->setBackground(QColor(0xd9, 0xe0, 0xe8));
    if (auto *box = qobject_cast<QLineEdit *>(widget))
        box->setTextMargins(3, 0, 3, 0);
    if (qstrcmp(widget->metaObject()->className(), "QMdi::ControlLabel") == 0)
        widget->installEventFilter(this);
}

bool LookStyle::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::Paint)
        return QProxyStyle::eventFilter(watched, event);
    auto *corner = static_cast<QWidget *>(watched);
    QPainter painter(corner);
    corner->windowIcon().paint(&painter, square(corner->rect(), 16).toRect());
    return true;
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const {
    switch (metric) {
    case PM_ButtonIconSize:
        return 18;
    case PM_SmallIconSize:
        return 18;
    case PM_ToolTipLabelFrameWidth:
        return 8;
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
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_Table_GridLineColor:
        return int(QColor(0xdd, 0xe3, 0xea).rgb());
    case SH_UnderlineShortcut:
        return 1;
    case SH_ItemView_ShowDecorationSelected:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

} // namespace zel::controls
