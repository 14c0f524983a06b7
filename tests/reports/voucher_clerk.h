#pragma once

#include "platform/controls/date_box.h"
#include "platform/controls/memo_box.h"
#include "platform/controls/text_box.h"
#include "tests/support/driver.h"
#include "tests/support/seeded_books.h"
#include "vouchers/voucher.h"

#include <QAbstractButton>
#include <QApplication>

namespace zel::test {

/// "1234.07".
inline QString amountText(Cents cents) {
    const Cents magnitude = cents < 0 ? -cents : cents;
    return QString("%1%2.%3")
        .arg(cents < 0 ? "-" : "")
        .arg(magnitude / 100)
        .arg(magnitude % 100, 2, 10, QLatin1Char('0'));
}

/// Saves a generated voucher of a hand-entered kind on its screen, which must take the number that the
/// voucher has. No key is pressed: what is under test is what the screen posts.
inline void saveOnScreen(const BookVoucher &voucher) {
    const vouchers::VoucherKind &kind = vouchers::voucherKind(codeOf(voucher.kind));
    if (!form(kind.form))
        vouchers::showVoucher(kind);
    QWidget *screen = form(kind.form);
    const auto box = [&](const char *name) { return control<controls::TextBox>(screen, name); };
    const auto push = [&](const char *button) {
        const QStringList said = textsOf([&] { control<QAbstractButton>(screen, button)->click(); });
        if (!said.isEmpty())
            qFatal("%s says: %s", kind.form, qPrintable(said.join('\n')));
    };
    if (box("txtVoucher")->text() != QString::number(voucher.number))
        qFatal("%s numbers %s, not %d", kind.form, qPrintable(box("txtVoucher")->text()), voucher.number);
    control<controls::DateBox>(screen, "DTPicker")->setValue(voucher.date);
    box("txtPaidTo")->setText(QString::fromStdString(voucher.paidTo));
    for (const BookEntry &entry : voucher.entries) {
        for (const auto &[name, account] : {std::pair("txtDrAc", entry.debit), {"txtCrAc", entry.credit}}) {
            box(name)->setText(QString::number(account));
            box(name)->setTag(QString::number(account));
        }
        // Nothing is refused, but a tenth of a hundredth is not nothing.
        box("txtDRCR")->setText(entry.amount == 0 ? "0.001" : amountText(entry.amount));
        box("txtChecque")->setText(QString::fromStdString(entry.cheque));
        control<controls::MemoBox>(screen, "txtNaration")
            ->setPlainText(QString::fromStdString(entry.narration));
        box("txtFile")->setText(QString::fromStdString(entry.file));
        box("txtBill")->setText(QString::fromStdString(entry.bill));
        push("cmdAdd");
    }
    push("cmdSave");
}

} // namespace zel::test
