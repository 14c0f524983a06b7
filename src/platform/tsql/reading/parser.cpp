#include "platform/tsql/reading/parser.h"

#include "platform/tsql/reading/failure.h"
#include "platform/tsql/text/names.h"

namespace zel::tsql {

std::string_view Parser::view(const Token &token) const {
    return m_source.substr(token.begin, token.end - token.begin);
}

bool Parser::isWord(std::string_view word, std::size_t ahead) const {
    return token(ahead).kind == TokenKind::Word && sameName(view(token(ahead)), word);
}

bool Parser::accept(Keyword word) {
    if (!is(word))
        return false;
    ++m_at;
    return true;
}

bool Parser::accept(char sign) {
    if (!isSign(sign))
        return false;
    ++m_at;
    return true;
}

bool Parser::acceptWord(std::string_view word) {
    if (!isWord(word))
        return false;
    ++m_at;
    return true;
}

void Parser::expect(Keyword word) {
    if (!accept(word))
        refuse();
}

void Parser::expect(char sign) {
    if (!accept(sign))
        refuse();
}

void Parser::refuse() const {
    syntaxError(m_source, m_tokens, m_at);
}

bool Parser::isName(std::size_t ahead) const {
    const Token &here = token(ahead);
    return here.kind == TokenKind::Quoted || (here.kind == TokenKind::Word && here.keyword == Keyword::None);
}

std::string_view Parser::name() {
    if (!isName())
        refuse();
    return nameText(m_tokens[m_at++]);
}

std::string_view Parser::nameText(const Token &token) const {
    const std::string_view text = view(token);
    if (token.kind != TokenKind::Quoted)
        return text;
    const std::string_view inner = text.substr(1, text.size() - 2);
    if (inner.find(text.back()) == std::string_view::npos)
        return inner;
    char *copy = m_arena.characters(inner.size());
    std::size_t size = 0;
    for (std::size_t i = 0; i < inner.size(); ++i) {
        copy[size++] = inner[i];
        i += inner[i] == text.back() ? 1 : 0;
    }
    return {copy, size};
}

std::string_view Parser::literalText(const Token &token) const {
    const std::string_view text = view(token);
    const std::size_t open = text.front() == '\'' ? 0 : 1;
    const std::string_view inner = text.substr(open + 1, text.size() - open - 2);
    if (inner.find('\'') == std::string_view::npos)
        return inner;
    char *copy = m_arena.characters(inner.size());
    std::size_t size = 0;
    for (std::size_t i = 0; i < inner.size(); ++i) {
        copy[size++] = inner[i];
        i += inner[i] == '\'' ? 1 : 0;
    }
    return {copy, size};
}

Node *Parser::node(NodeKind kind) {
    Node *made = m_arena.make<Node>();
    made->kind = kind;
    made->at = token().begin;
    return made;
}

Node *Parser::pair(NodeKind kind, Node *a, Node *b, std::uint32_t at, char op) {
    Node *made = m_arena.make<Node>();
    made->kind = kind;
    made->op = op;
    made->at = at;
    made->a = a;
    made->b = b;
    return made;
}

} // namespace zel::tsql
