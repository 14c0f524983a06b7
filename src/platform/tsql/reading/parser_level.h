#pragma once

#include "platform/tsql/reading/failure.h"
#include "platform/tsql/reading/parser.h"

namespace zel::tsql {

/// One level of nesting, for its own lifetime; 191 when there are too many. Bounds our own recursion.
struct Parser::Level {
    explicit Level(Parser &parser) : m_parser(parser) {
        if (++m_parser.m_depth > Deepest)
            failTooDeep(parser.m_source, parser.token().begin);
    }
    ~Level() { --m_parser.m_depth; }
    Level(const Level &) = delete;
    Level &operator=(const Level &) = delete;

private:
    static constexpr int Deepest = 400;
    Parser &m_parser;
};

} // namespace zel::tsql
