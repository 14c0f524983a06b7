#pragma once

#include <QSvgRenderer>
#include <QWidget>

namespace zel::shell {

/// Makes the images under ":/shell/" readable; to be called before a design that names one is set up.
void loadImages();

/// The institute's program mark, drawn as large as the widget allows, its shape kept.
class Logo : public QWidget {
    Q_OBJECT
public:
    explicit Logo(QWidget *parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QSvgRenderer m_renderer;
};

} // namespace zel::shell
