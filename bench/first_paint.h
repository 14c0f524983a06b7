#pragma once

#include <QString>

/// From here on the process ends, with status 0, as soon as a window of that objectName has been painted.
void endAtFirstPaint(const QString &window);
