#include "platform/tsql/reading/keywords.h"

#include "platform/tsql/text/names.h"

#include <array>

namespace zel::tsql {

namespace {

struct Entry {
    std::string_view word;
    Keyword keyword = Keyword::Other;
};

// clang-format off
constexpr Entry Words[] = {
    {"all", Keyword::All}, {"and", Keyword::And}, {"as", Keyword::As}, {"asc", Keyword::Asc},
    {"begin", Keyword::Begin}, {"between", Keyword::Between}, {"by", Keyword::By}, {"case", Keyword::Case},
    {"clustered", Keyword::Clustered}, {"constraint", Keyword::Constraint}, {"convert", Keyword::Convert},
    {"create", Keyword::Create}, {"cross", Keyword::Cross}, {"declare", Keyword::Declare},
    {"default", Keyword::Default}, {"delete", Keyword::Delete}, {"desc", Keyword::Desc},
    {"distinct", Keyword::Distinct}, {"drop", Keyword::Drop}, {"else", Keyword::Else}, {"end", Keyword::End},
    {"exec", Keyword::Exec}, {"execute", Keyword::Execute}, {"exists", Keyword::Exists}, {"from", Keyword::From},
    {"full", Keyword::Full}, {"group", Keyword::Group}, {"having", Keyword::Having},
    {"identity", Keyword::Identity}, {"if", Keyword::If}, {"in", Keyword::In}, {"index", Keyword::Index}, {"inner", Keyword::Inner},
    {"insert", Keyword::Insert}, {"into", Keyword::Into}, {"is", Keyword::Is}, {"join", Keyword::Join},
    {"key", Keyword::Key}, {"left", Keyword::Left}, {"like", Keyword::Like},
    {"nonclustered", Keyword::NonClustered}, {"not", Keyword::Not}, {"null", Keyword::Null}, {"on", Keyword::On},
    {"or", Keyword::Or}, {"order", Keyword::Order}, {"outer", Keyword::Outer}, {"primary", Keyword::Primary},
    {"proc", Keyword::Proc}, {"procedure", Keyword::Procedure}, {"return", Keyword::Return}, {"right", Keyword::Right},
    {"select", Keyword::Select}, {"set", Keyword::Set}, {"statistics", Keyword::Statistics},
    {"table", Keyword::Table}, {"then", Keyword::Then}, {"top", Keyword::Top}, {"union", Keyword::Union},
    {"unique", Keyword::Unique}, {"update", Keyword::Update}, {"values", Keyword::Values},
    {"when", Keyword::When}, {"where", Keyword::Where}, {"with", Keyword::With},
    {"add"}, {"alter"}, {"any"}, {"authorization"}, {"backup"}, {"break"}, {"browse"}, {"bulk"}, {"cascade"},
    {"check"}, {"checkpoint"}, {"close"}, {"coalesce"}, {"collate"}, {"column"}, {"commit"}, {"compute"}, {"contains"},
    {"containstable"}, {"continue"}, {"current"}, {"current_date"}, {"current_time"}, {"current_timestamp"},
    {"current_user"}, {"cursor"}, {"database"}, {"dbcc"}, {"deallocate"}, {"deny"}, {"disk"}, {"distributed"},
    {"double"}, {"dump"}, {"errlvl"}, {"escape"}, {"except"}, {"exit"}, {"external"}, {"fetch"}, {"file"},
    {"fillfactor"}, {"for"}, {"foreign"}, {"freetext"}, {"freetexttable"}, {"function"}, {"goto"}, {"grant"},
    {"holdlock"}, {"identity_insert"}, {"identitycol"}, {"intersect"}, {"kill"}, {"lineno"}, {"load"},
    {"merge"}, {"national"}, {"nocheck"}, {"nullif"}, {"of"}, {"off"}, {"offsets"}, {"open"}, {"opendatasource"},
    {"openquery"}, {"openrowset"}, {"openxml"}, {"option"}, {"over"}, {"percent"}, {"pivot"}, {"plan"}, {"precision"},
    {"print"}, {"public"}, {"raiserror"}, {"read"}, {"readtext"}, {"reconfigure"}, {"references"}, {"replication"},
    {"restore"}, {"restrict"}, {"revert"}, {"revoke"}, {"rollback"}, {"rowcount"}, {"rowguidcol"},
    {"rule"}, {"save"}, {"schema"}, {"securityaudit"}, {"session_user"}, {"setuser"}, {"shutdown"}, {"some"},
    {"system_user"}, {"tablesample"}, {"textsize"}, {"to"}, {"tran"}, {"transaction"}, {"trigger"}, {"truncate"},
    {"try_convert"}, {"tsequal"}, {"unpivot"}, {"updatetext"}, {"use"}, {"user"}, {"varying"}, {"view"}, {"waitfor"},
    {"while"}, {"within"}, {"writetext"},
};
// clang-format on

constexpr std::size_t Slots = 1024;
constexpr std::size_t LongestWord = 20;

constexpr std::size_t slotOf(std::string_view word) {
    std::uint32_t hash = 2166136261u;
    for (const char c : word)
        hash = (hash ^ static_cast<unsigned char>(lowered(c))) * 16777619u;
    return (hash ^ (hash >> 15)) % Slots;
}

constexpr auto Table = [] {
    std::array<std::uint8_t, Slots> table{};
    static_assert(std::size(Words) < 255);
    for (std::size_t i = 0; i < std::size(Words); ++i) {
        std::size_t slot = slotOf(Words[i].word);
        while (table[slot] != 0)
            slot = (slot + 1) % Slots;
        table[slot] = static_cast<std::uint8_t>(i + 1);
    }
    return table;
}();

} // namespace

Keyword keyword(std::string_view word) {
    if (word.size() < 2 || word.size() > LongestWord)
        return Keyword::None;
    for (std::size_t slot = slotOf(word); Table[slot] != 0; slot = (slot + 1) % Slots) {
        const Entry &entry = Words[Table[slot] - 1];
        if (sameName(entry.word, word))
            return entry.keyword;
    }
    return Keyword::None;
}

} // namespace zel::tsql
