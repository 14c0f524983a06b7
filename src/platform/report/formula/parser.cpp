#include "platform/report/formula/expression.h"

#include "platform/base/date_text.h"
#include "platform/report/formula/lexer.h"

#include <array>
#include <map>

namespace zel::report {

namespace {

using Node = std::shared_ptr<Expression>;

/// Recursive descent, loosest first: if, or, and, not, comparison, & and + -, * /, sign, primary.
class Parser {
public:
    explicit Parser(std::vector<Token> all) : m_tokens(std::move(all)) {}

    Node run() {
        Node whole = expression();
        if (peek().kind != TokenKind::End)
            refuse();
        return whole;
    }

private:
    struct Binary {
        std::string_view symbol;
        Op op;
    };

    const Token &peek() const { return m_tokens[m_at]; }
    const Token &take() { return m_tokens[m_at++]; }
    bool isWord(std::string_view word) const { return peek().kind == TokenKind::Word && peek().text == word; }
    bool isSymbol(std::string_view symbol) const {
        return peek().kind == TokenKind::Symbol && peek().text == symbol;
    }
    bool acceptWord(std::string_view word) { return isWord(word) && (++m_at, true); }
    bool acceptSymbol(std::string_view symbol) { return isSymbol(symbol) && (++m_at, true); }

    [[noreturn]] void refuse() const {
        if (peek().kind == TokenKind::End)
            throw FormulaError(102, QStringLiteral("Incorrect syntax at the end of the formula."),
                               peek().begin);
        throw FormulaError(
            102, QStringLiteral("Incorrect syntax near '%1'.").arg(QString::fromStdString(peek().text)),
            peek().begin);
    }

    void expectWord(std::string_view word) {
        if (!acceptWord(word))
            refuse();
    }
    void expectSymbol(std::string_view symbol) {
        if (!acceptSymbol(symbol))
            refuse();
    }

    static Node node(Op op, std::size_t offset, std::vector<Node> operands) {
        auto made = std::make_shared<Expression>();
        made->op = op;
        made->offset = offset;
        made->operands = std::move(operands);
        return made;
    }

    /// A formula nested deeper than this is refused rather than run out of stack.
    struct Depth {
        explicit Depth(Parser &parser) : m_parser(parser) {
            if (++m_parser.m_depth > 200)
                throw FormulaError(191, QStringLiteral("The formula is nested too deeply."),
                                   parser.peek().begin);
        }
        ~Depth() { --m_parser.m_depth; }
        Parser &m_parser;
    };

    Node expression() {
        const Depth depth(*this);
        const std::size_t begin = peek().begin;
        if (!acceptWord("if"))
            return disjunction();
        Node condition = expression();
        expectWord("then");
        Node then = expression();
        Node otherwise;
        if (acceptWord("else")) {
            otherwise = expression();
        } else {
            otherwise = node(Op::Literal, peek().begin, {});
        }
        return node(Op::If, begin, {condition, then, otherwise});
    }

    Node disjunction() {
        Node left = conjunction();
        while (isWord("or")) {
            const std::size_t at = take().begin;
            left = node(Op::Or, at, {left, conjunction()});
        }
        return left;
    }

    Node conjunction() {
        Node left = negation();
        while (isWord("and")) {
            const std::size_t at = take().begin;
            left = node(Op::And, at, {left, negation()});
        }
        return left;
    }

    Node negation() {
        const Depth depth(*this);
        const std::size_t begin = peek().begin;
        if (acceptWord("not"))
            return node(Op::Not, begin, {negation()});
        return comparison();
    }

    Node comparison() {
        static constexpr std::array<Binary, 6> operators{{{"=", Op::Equal},
                                                          {"<>", Op::NotEqual},
                                                          {"<", Op::Less},
                                                          {"<=", Op::LessEqual},
                                                          {">", Op::Greater},
                                                          {">=", Op::GreaterEqual}}};
        Node left = sum();
        const std::size_t at = peek().begin;
        for (const Binary &each : operators) {
            if (acceptSymbol(each.symbol))
                return node(each.op, at, {left, sum()});
        }
        if (acceptWord("like"))
            return node(Op::Like, at, {left, sum()});
        if (acceptWord("in")) {
            Node from = sum();
            expectWord("to");
            return node(Op::InRange, at, {left, from, sum()});
        }
        return left;
    }

    Node sum() {
        static constexpr std::array<Binary, 3> operators{
            {{"+", Op::Add}, {"-", Op::Subtract}, {"&", Op::Concatenate}}};
        return chain(operators, [this] { return product(); });
    }

    Node product() {
        static constexpr std::array<Binary, 2> operators{{{"*", Op::Multiply}, {"/", Op::Divide}}};
        return chain(operators, [this] { return factor(); });
    }

    template <std::size_t N, typename Next>
    Node chain(const std::array<Binary, N> &operators, Next next) {
        Node left = next();
        for (bool more = true; more;) {
            more = false;
            for (const Binary &each : operators) {
                const std::size_t at = peek().begin;
                if (acceptSymbol(each.symbol)) {
                    left = node(each.op, at, {left, next()});
                    more = true;
                    break;
                }
            }
        }
        return left;
    }

    Node factor() {
        const Depth depth(*this);
        const std::size_t begin = peek().begin;
        if (acceptSymbol("-"))
            return node(Op::Negate, begin, {factor()});
        if (acceptSymbol("+"))
            return factor();
        return primary();
    }

    Node primary() {
        const Token &token = peek();
        if (acceptSymbol("(")) {
            Node inner = expression();
            expectSymbol(")");
            return inner;
        }
        if (token.kind == TokenKind::End || token.kind == TokenKind::Symbol)
            refuse();
        if (token.kind == TokenKind::Word)
            return word();
        ++m_at;
        if (token.kind == TokenKind::Field)
            return field(token);
        Node made = node(Op::Literal, token.begin, {});
        made->literal = literal(token);
        return made;
    }

    static Value literal(const Token &token) {
        if (token.kind == TokenKind::Text)
            return token.text;
        if (token.kind == TokenKind::Number) {
            const auto number = Decimal::parse(token.text);
            if (!number)
                throw FormulaError(1007, QStringLiteral("The number is out of range."), token.begin);
            return *number;
        }
        constexpr std::size_t DayAlone = 10;
        const auto moment = token.text.size() == DayAlone ? fromStoredDate(token.text) : std::nullopt;
        if (!moment)
            throw FormulaError(
                241, QStringLiteral("There is no such date; dates have the form #yyyy-mm-dd#."), token.begin);
        return moment->date;
    }

    static Node field(const Token &token) {
        const auto first = token.text.find_first_not_of(' ');
        if (first == std::string::npos)
            throw FormulaError(102, QStringLiteral("The field has no name."), token.begin);
        Node made = node(Op::Column, token.begin, {});
        made->name = token.text.substr(first, token.text.find_last_not_of(' ') - first + 1);
        return made;
    }

    Node word() {
        static const std::array<std::string_view, 8> reserved{"and", "or", "not",  "like",
                                                              "in",  "to", "then", "else"};
        if (std::ranges::find(reserved, peek().text) != reserved.end())
            refuse();
        const Token &name = take();
        if (name.text == "null")
            return node(Op::Literal, name.begin, {});
        Node made = node(Op::Call, name.begin, {});
        made->name = name.text;
        if (!acceptSymbol("("))
            return made;
        if (acceptSymbol(")"))
            return made;
        do
            made->operands.push_back(expression());
        while (acceptSymbol(","));
        expectSymbol(")");
        return made;
    }

    std::vector<Token> m_tokens;
    std::size_t m_at = 0;
    int m_depth = 0;
};

} // namespace

std::shared_ptr<Expression> parse(const Sql &formula) {
    return Parser(tokens(formula)).run();
}

QString nameOf(Kind kind) {
    static const std::map<Kind, QString> names{{Kind::Null, QStringLiteral("nothing")},
                                               {Kind::Number, QStringLiteral("a number")},
                                               {Kind::Text, QStringLiteral("a text")},
                                               {Kind::Date, QStringLiteral("a date")},
                                               {Kind::Boolean, QStringLiteral("a condition")}};
    return names.at(kind);
}

Error located(const FormulaError &error, std::string_view formula, const QString &what) {
    const std::size_t offset = std::min(error.offset(), formula.size());
    const std::size_t lineBegin = offset == 0 ? 0 : formula.rfind('\n', offset - 1) + 1;
    const std::size_t lineEnd = std::min(formula.find('\n', offset), formula.size());
    const auto line =
        std::count(formula.begin(), formula.begin() + static_cast<std::ptrdiff_t>(offset), '\n') + 1;
    const QString shown = QString::fromUtf8(formula.substr(lineBegin, lineEnd - lineBegin));
    const auto column = QString::fromUtf8(formula.substr(lineBegin, offset - lineBegin)).size();
    return Error(error.number(), QStringLiteral("%1, line %2, column %3: %4\n%5\n%6^")
                                     .arg(what)
                                     .arg(line)
                                     .arg(column + 1)
                                     .arg(error.description(), shown, QString(column, QLatin1Char(' '))));
}

} // namespace zel::report
