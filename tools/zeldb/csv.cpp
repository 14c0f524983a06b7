#include "csv.h"

#include "console.h"
#include "platform/base/decimal.h"
#include "platform/base/value.h"
#include "platform/tsql/text/text_rules.h"

#include <QFile>
#include <QStringConverter>

#include <algorithm>

namespace zel::tool {

namespace {

constexpr qsizetype MostColumns = 200;
constexpr qint64 LargestFile = qint64(1) << 30;

/// Goes through the text cell by cell.
class Reading {
public:
    Reading(QString text, QString path) : m_text(std::move(text)), m_path(std::move(path)) {}

    Csv read() {
        Csv table;
        table.separator = separator();
        while (m_at < m_text.size()) {
            Csv::Row row{m_line, {}};
            readRow(row.cells, table.separator);
            if (std::ranges::all_of(row.cells, &QString::isEmpty))
                continue;
            if (table.columns.isEmpty())
                table.columns = row.cells;
            else
                table.rows.append(row);
        }
        if (table.columns.isEmpty())
            refuse(QStringLiteral("The file \"%1\" is empty; its first line names the columns.").arg(m_path));
        return table;
    }

private:
    [[noreturn]] void fail(qsizetype line, const QString &what) const {
        refuse(QStringLiteral("The file \"%1\" can't be read: line %2 %3.").arg(m_path).arg(line).arg(what));
    }

    [[nodiscard]] QChar separator() const {
        const qsizetype end =
            std::min({m_text.size(), m_text.indexOf(u'\n') < 0 ? m_text.size() : m_text.indexOf(u'\n')});
        const QStringView first = QStringView(m_text).left(end);
        QChar most = u',';
        for (const QChar other : {u';', u'\t'})
            if (first.count(other) > first.count(most))
                most = other;
        return most;
    }

    void readRow(QStringList &cells, QChar separator) {
        while (true) {
            if (cells.size() == MostColumns)
                fail(m_line, QStringLiteral("has more than %1 columns").arg(MostColumns));
            cells.append(m_at < m_text.size() && m_text[m_at] == u'"' ? quoted(separator) : bare(separator));
            if (m_at >= m_text.size())
                return;
            const QChar end = m_text[m_at++];
            if (end == separator)
                continue;
            if (end == u'\r' && m_at < m_text.size() && m_text[m_at] == u'\n')
                ++m_at;
            ++m_line;
            return;
        }
    }

    [[nodiscard]] bool isEnd(QChar letter, QChar separator) const {
        return letter == separator || letter == u'\n' || letter == u'\r';
    }

    QString bare(QChar separator) {
        const qsizetype begin = m_at;
        while (m_at < m_text.size() && !isEnd(m_text[m_at], separator))
            ++m_at;
        return m_text.mid(begin, m_at - begin).trimmed();
    }

    QString quoted(QChar separator) {
        const qsizetype opened = m_line;
        QString cell;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] != u'"') {
                m_line += m_text[m_at] == u'\n' ? 1 : 0;
                cell += m_text[m_at];
            } else if (m_at + 1 < m_text.size() && m_text[m_at + 1] == u'"') {
                cell += m_text[m_at++];
            } else {
                ++m_at;
                if (m_at < m_text.size() && !isEnd(m_text[m_at], separator))
                    fail(m_line, QStringLiteral("has text behind a closing quote"));
                return cell.trimmed();
            }
        }
        fail(opened, QStringLiteral("opens a quote that nothing closes"));
    }

    QString m_text;
    QString m_path;
    qsizetype m_at = 0;
    qsizetype m_line = 1;
};

} // namespace

Csv csvOf(const QByteArray &bytes, const QString &path) {
    QStringDecoder decoder(QStringDecoder::Utf8); // takes the mark away
    const QString text = decoder(bytes);
    if (decoder.hasError() || bytes.contains('\0')) {
        const QChar sign = decoder.hasError() ? QChar(QChar::ReplacementCharacter) : QChar(u'\0');
        const QStringView before = QStringView(text).left(text.indexOf(sign));
        refuse(
            QStringLiteral("The file \"%1\" is not UTF-8 (line %2); save it as \"CSV UTF-8\" and try again.")
                .arg(path)
                .arg(1 + before.count(u'\n')));
    }
    return Reading(text, path).read();
}

Csv readCsv(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        refuse(QStringLiteral("The file \"%1\" can't be read: %2.").arg(path, file.errorString()));
    if (file.size() > LargestFile)
        refuse(QStringLiteral("The file \"%1\" is larger than 1 GB; please part it.").arg(path));
    return csvOf(file.readAll(), path);
}

QString Record::text(const char *column) const {
    for (qsizetype at = 0; at < m_table.columns.size(); ++at)
        if (m_table.columns[at].compare(QLatin1String(column), Qt::CaseInsensitive) == 0)
            return m_row.cells.value(at);
    return {};
}

QString Record::upper(const char *column) const {
    return QString::fromStdString(tsql::upperCased(text(column).toStdString()));
}

std::optional<std::int64_t> Record::cents(const char *column) const {
    QString number = text(column);
    if (number.isEmpty())
        return std::nullopt;
    // Where commas don't part the cells, one may stand for the point.
    if (m_table.separator != u',' && number.count(u',') == 1 && !number.contains(u'.'))
        number.replace(u',', u'.');
    const auto read = Decimal::parse(number.toStdString());
    constexpr std::int64_t Hundredth = Decimal::Scale / 100;
    const bool tooFine = number.contains(u'.') && number.size() - number.indexOf(u'.') > 3;
    if (!read || tooFine || read->tenThousandths() % Hundredth != 0)
        throw RefusedRow{QStringLiteral("%1 is no amount such as 1234.50: \"%2\"")
                             .arg(QLatin1String(column), text(column))};
    return read->tenThousandths() / Hundredth;
}

QDate Record::date(const char *column) const {
    const QString given = text(column);
    if (given.isEmpty())
        return QDate::currentDate();
    const QDate day = Value(given).date();
    if (!day.isValid() || day.year() < 1900 || day.year() > 9998)
        throw RefusedRow{QStringLiteral("%1 is no date such as 31/01/2026 or 2026-01-31: \"%2\"")
                             .arg(QLatin1String(column), given)};
    return day;
}

QString Record::masked(const char *column, const char *mask) const {
    const QString given = text(column);
    if (given.isEmpty())
        return {};
    QString digits = given;
    digits.removeIf([](QChar letter) { return letter == u'-' || letter == u' '; });
    QString made;
    qsizetype used = 0;
    for (const QChar place : QString::fromLatin1(mask))
        made += place == u'#' ? digits.mid(used++, 1) : QString(place);
    const bool fits = used == digits.size() && std::ranges::all_of(digits, [](QChar letter) {
                          return letter >= u'0' && letter <= u'9';
                      });
    if (!fits)
        throw RefusedRow{QStringLiteral("%1 is not of the form %2: \"%3\"")
                             .arg(QLatin1String(column), QLatin1String(mask), given)};
    return made;
}

} // namespace zel::tool
