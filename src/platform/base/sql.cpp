#include "platform/base/sql.h"

namespace zel {

Sql &Sql::operator+=(const Sql &other) {
    const std::size_t shift = m_text.size();
    m_text += other.m_text;
    for (const Piece &piece : other.m_pieces)
        m_pieces.push_back({piece.begin + shift, piece.end + shift});
    return *this;
}

Sql &Sql::append(const std::string &foreign) {
    const std::size_t begin = m_text.size();
    m_text += foreign;
    m_pieces.push_back({begin, m_text.size()});
    return *this;
}

} // namespace zel
