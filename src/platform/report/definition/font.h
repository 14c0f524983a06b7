#pragma once

#include <QColor>
#include <QString>

#include <memory>

namespace zel::report {

/// How a text looks; shared by all texts of a style.
struct Font {
    QString family = QStringLiteral("Noto Sans");
    double points = 9;
    bool bold = false;
    bool italic = false;
    QColor color = Qt::black;
    friend bool operator==(const Font &left, const Font &right) {
        return left.points == right.points && left.bold == right.bold && left.italic == right.italic &&
               left.color == right.color && left.family == right.family;
    }
};
using FontPtr = std::shared_ptr<const Font>;

} // namespace zel::report
