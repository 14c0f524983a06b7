#include "shell/logo.h"

#include <QPainter>

namespace {
void loadShellImages() {
    Q_INIT_RESOURCE(shell);
}
} // namespace

namespace zel::shell {

Logo::Logo(QWidget *parent) : QWidget(parent) {
    loadShellImages();
    m_renderer.load(QStringLiteral(":/shell/logo.svg"));
}

QSize Logo::sizeHint() const {
    return m_renderer.defaultSize();
}

void Logo::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const QSizeF shape = QSizeF(m_renderer.defaultSize()).scaled(size(), Qt::KeepAspectRatio);
    m_renderer.render(&painter,
                      QRectF(QPointF((width() - shape.width()) / 2, (height() - shape.height()) / 2), shape));
}

} // namespace zel::shell
