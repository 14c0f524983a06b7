#include "shell/logo.h"

#include <QPainter>

// A static library's resources are linked only when they are named, outside every namespace.
static void initResources() {
    Q_INIT_RESOURCE(shell);
}

namespace zel::shell {

void loadImages() {
    initResources();
}

Logo::Logo(QWidget *parent) : QWidget(parent) {
    loadImages();
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
