#pragma once

#include <QString>

class QWidget;

namespace zel::controls {

enum MsgStyle { vbOKOnly = 0, vbYesNo = 4, vbCritical = 16, vbInformation = 64 };
enum MsgResult { vbOK = 1, vbYes = 6, vbNo = 7 };

/// Shows a message and waits for the answer. `style` is a sum of MsgStyle. Without a title the box bears the
/// program's name. It stands before `parent`, or the active window. Its objectName is "MsgBox".
MsgResult MsgBox(const QString &text, int style = vbOKOnly, const QString &title = {},
                 QWidget *parent = nullptr);

} // namespace zel::controls
