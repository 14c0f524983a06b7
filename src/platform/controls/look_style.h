#pragma once

#include <QColor>
#include <QHash>
#include <QIcon>
#include <QProxyStyle>

namespace zel::controls {

/// Fusion with one focus mark for all controls: a ring in the accent colour.
class LookStyle : public QProxyStyle {
    Q_OBJECT
public:
    LookStyle();
    [[nodiscard]] static QColor accent() { return QColor(0x1f, 0x6f, 0xb8); }
    [[nodiscard]] static QColor readOnlyBase() { return QColor(0xed, 0xf0, 0xf3); }
    [[nodiscard]] static QColor titleBar() { return QColor(0x24, 0x50, 0x7d); }

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool enabled,
                      const QString &text, QPalette::ColorRole role) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap standard, const QStyleOption *option,
                                     const QWidget *widget) const override;
    [[nodiscard]] QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                              const QStyleOption *option) const override;
    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *data) const override;
    /// Paints a maximized screen's icon in the menu bar, which Qt itself cuts off at 200%.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Made anew each time, as Fusion does it for each painting of a title bar, an icon's pixmaps would be
    /// cached anew each time.
    mutable QHash<StandardPixmap, QIcon> m_standardIcons;
};

} // namespace zel::controls
