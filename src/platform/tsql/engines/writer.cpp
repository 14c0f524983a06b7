#include "platform/tsql/engines/writer.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/reading/failure.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace zel::tsql {

std::string Writer::take() {
    if (m_out.capacity() > 2 * m_out.size())
        m_out.shrink_to_fit();
    return std::move(m_out);
}

int Writer::parameter(Slot slot) {
    auto found = std::ranges::find(m_parameters, slot);
    if (found == m_parameters.end())
        found = m_parameters.insert(found, slot);
    return static_cast<int>(found - m_parameters.begin()) + 1;
}

Writer &Writer::operator<<(int number) {
    std::array<char, 12> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number);
    m_out.append(text.data(), end.ptr);
    return *this;
}

Writer &Writer::operator<<(const Expr &node) {
    enter(node.at);
    const NodeRule &rule = m_traits.nodes[static_cast<std::size_t>(node.op)];
    if (rule.write != nullptr)
        rule.write(*this, node);
    else
        pattern(rule.text, node);
    --m_level;
    return *this;
}

void Writer::enter(std::uint32_t at) {
    if (++m_level > m_deepest) {
        m_deepest = m_level;
        m_deepestAt = at;
    }
    if (m_out.size() > m_most)
        failTooDeep(m_source, at);
}

std::string Writer::deepest() const {
    constexpr int Shallow = 8; // what every engine takes
    constexpr std::size_t Short = 2000;
    return m_deepest > Shallow || m_out.size() > Short ? described(m_source, m_deepestAt, TooDeep)
                                                       : std::string();
}

void Writer::pattern(std::string_view text, const Expr &node) {
    std::size_t begin = 0;
    for (std::size_t at = text.find('$'); at != std::string_view::npos; at = text.find('$', begin)) {
        m_out += text.substr(begin, at - begin);
        switch (text[at + 1]) {
        case 'a':
            *this << *node.a;
            break;
        case 'b':
            *this << *node.b;
            break;
        case 'c':
            *this << *node.c;
            break;
        case '*':
            list(node.a);
            break;
        case '+':
            list(node.b);
            break;
        case 'n':
            *this << node.n;
            break;
        case 'm':
            *this << node.m;
            break;
        case 't':
            *this << node.text;
            break;
        case 'd':
            *this << (node.distinct ? std::string_view("DISTINCT ") : std::string_view());
            break;
        default:
            break;
        }
        begin = at + 2;
    }
    m_out += text.substr(begin);
}

void Writer::list(const Expr *first) {
    for (const Expr *element = first; element != nullptr; element = element->next) {
        if (element != first)
            m_out += ',';
        *this << *element;
    }
}

void Writer::name(std::string_view name) {
    m_out += '"';
    for (const char c : name) {
        m_out += c;
        if (c == '"')
            m_out += c;
    }
    m_out += '"';
}

void Writer::quoted(std::string_view text) {
    m_out += '\'';
    std::size_t begin = 0;
    for (std::size_t at = text.find('\''); at != std::string_view::npos; at = text.find('\'', begin)) {
        m_out += text.substr(begin, at + 1 - begin);
        m_out += '\'';
        begin = at + 1;
    }
    m_out += text.substr(begin);
    m_out += '\'';
}

void Writer::column(const Expr &node) {
    *this << 't' << node.source->number << '.';
    if (node.source->derived != nullptr)
        *this << 'c' << node.m;
    else
        name(columnOf(node).name);
}

void Writer::key(const Expr &value) {
    if (isText(value.type))
        *this << m_traits.keyBegin << value << m_traits.keyEnd;
    else
        *this << value;
}

} // namespace zel::tsql
