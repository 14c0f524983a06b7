#include "platform/base/number_text.h"

namespace zel {

Decimal leadingNumber(const QString &text)
{
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    const qsizetype start = i;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        ++i;
    bool point = false;
    while (i < text.size() && ((text[i] >= u'0' && text[i] <= u'9') || (text[i] == u'.' && !point))) {
        point = point || text[i] == u'.';
        ++i;
    }
    return Decimal::parse(text.mid(start, i - start).toStdString()).value_or(Decimal());
}

QString format(Decimal value, const QString &picture)
{
    const qsizetype point = picture.indexOf(u'.');
    const QString whole = point < 0 ? picture : picture.left(point);
    const auto decimals = point < 0 ? 0 : int(picture.size() - point - 1);
    const int least = int(whole.count(u'0'));

    const QString plain = QString::fromStdString(value.rounded(decimals).toString());
    const bool negative = plain.startsWith(u'-');
    const QString digits = negative ? plain.mid(1) : plain;
    QString left = digits.section(u'.', 0, 0);
    QString right = digits.section(u'.', 1, 1);
    if (left == u"0" && least == 0)
        left.clear();
    left = left.rightJustified(least, u'0');
    if (whole.contains(u',')) {
        for (qsizetype at = left.size() - 3; at > 0; at -= 3)
            left.insert(at, u',');
    }
    right = right.leftJustified(decimals, u'0');
    return (negative ? QStringLiteral("-") : QString()) + left + (decimals > 0 ? u'.' + right : QString());
}

QString format(const QString &text, const QString &picture)
{
    return format(leadingNumber(QString(text).remove(u',')), picture);
}

QString shownAmount(Decimal value)
{
    return format(value, QStringLiteral("##,###0.00"));
}

QString storedAmount(Decimal value)
{
    return format(value, QStringLiteral("###0.00"));
}

QString sqlDate(QDate date)
{
    return date.toString(QStringLiteral("yyyy-MM-dd"));
}

} // namespace zel
