#include "platform/base/sql.h"

#include "platform/base/error.h"

#include <cstring>

namespace zel {

Sql Sql::trusted(std::string_view text) {
    Sql sql;
    sql.add(text);
    return sql;
}

Sql Sql::name(const QString &text) {
    const auto isNamePart = [](QChar c) {
        return c.isLetterOrNumber() || c.isSurrogate() || QStringView(u"_#$.").contains(c);
    };
    if (text.isEmpty() || !std::ranges::all_of(text, isNamePart))
        throw Error(102, QStringLiteral("\"%1\" is no name.").arg(text));
    return trusted(text.toStdString());
}

Sql &Sql::operator+=(const Sql &other) {
    if (&other == this)
        return *this += Sql(other);
    const std::size_t shift = text().size();
    add(other.text());
    for (const Piece &piece : other.m_pieces)
        m_pieces.push_back({piece.begin + shift, piece.end + shift, piece.secret});
    return *this;
}

Sql &Sql::append(std::string foreign, bool secret) {
    const std::size_t begin = text().size();
    add(foreign);
    m_pieces.push_back({begin, begin + foreign.size(), secret});
    if (secret)
        explicit_bzero(foreign.data(), foreign.size());
    return *this;
}

void Sql::add(std::string_view text) {
    const std::string_view before = this->text();
    if (const std::size_t size = before.size() + text.size(); m_built.empty() || size > m_built.capacity()) {
        std::vector<char> larger;
        larger.reserve(std::max(size, 2 * before.size()));
        larger.assign(before.begin(), before.end());
        wipe();
        m_built = std::move(larger);
    }
    m_literal = {};
    m_built.insert(m_built.end(), text.begin(), text.end());
}

void Sql::wipe() noexcept {
    if (std::ranges::any_of(m_pieces, &Piece::secret))
        explicit_bzero(m_built.data(), m_built.size());
}

bool takesPairApart(const Sql::Piece &piece, std::string_view text, std::size_t open, std::size_t close) {
    const auto isInside = [&](std::size_t at) { return at >= piece.begin && at < piece.end; };
    for (std::size_t i = text.find(text[open], open + 1); i < close && i < piece.end;
         i = text.find(text[open], i + 2)) {
        const bool parted = piece.begin == piece.end && i + 1 == piece.begin;
        if (isInside(i) != isInside(i + 1) || parted)
            return true;
    }
    return false;
}

} // namespace zel
