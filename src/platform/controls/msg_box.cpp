#include "platform/controls/msg_box.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>

namespace zel::controls {

namespace {

QMessageBox::Icon iconOf(int style) {
    if (style & vbInformation)
        return QMessageBox::Information;
    return style & vbCritical ? QMessageBox::Critical : QMessageBox::NoIcon;
}

} // namespace

MsgResult MsgBox(const QString &text, int style, const QString &title, QWidget *parent) {
    QWidget *before = parent ? parent->window() : QApplication::activeWindow();
    const QPointer<QMessageBox> box = new QMessageBox(before);
    box->setObjectName(QStringLiteral("MsgBox"));
    box->setWindowTitle(title.isEmpty() ? QStringLiteral("ZEL") : title);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setIcon(iconOf(style));
    box->setStandardButtons(style & vbYesNo ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    box->setDefaultButton(style & vbYesNo ? QMessageBox::Yes : QMessageBox::Ok);
    box->setWindowModality(Qt::ApplicationModal);
    const int answer = box->exec();
    delete box;
    if (!(style & vbYesNo))
        return vbOK;
    return answer == QMessageBox::Yes ? vbYes : vbNo;
}

} // namespace zel::controls
