#include "deploy/sql_dialect.h"

#include <gtest/gtest.h>

namespace rvl {
namespace {

struct Translated {
    const char* system;
    const char* sqlite;
};

TEST(SqlDialect, Translates) {
    const Translated cases[] = {
        {"SELECT * FROM DeployedFrontends;", "SELECT * FROM DeployedFrontends"},
        {" Select A+B From T Where A+B = 'x+y' ; ", "Select A||B From T Where A||B = 'x+y' COLLATE NOCASE"},
        {"SELECT TOP 1 * FROM T WHERE N = 3 ORDER BY N DESC",
         "SELECT * FROM T WHERE N = 3 ORDER BY N DESC LIMIT 1"},
        {"select top 12 A from T;", "select A from T LIMIT 12"},
        {"SELECT A FROM T WHERE N IN (SELECT TOP 2 N FROM U WHERE (M = 1)) AND A = 'b'",
         "SELECT A FROM T WHERE N IN (SELECT N FROM U WHERE (M = 1) LIMIT 2) AND A = 'b' COLLATE NOCASE"},
        {"SELECT Top FROM T", "SELECT Top FROM T"},
        {"DELETE FROM T WHERE A = 'O''Brien' AND B Is Null",
         "DELETE FROM T WHERE A = 'O''Brien' COLLATE NOCASE AND B Is Null"},
        {"SELECT A FROM T WHERE A = 'select top 1; -- (' AND B = ''",
         "SELECT A FROM T WHERE A = 'select top 1; -- (' COLLATE NOCASE AND B = '' COLLATE NOCASE"},
        {"INSERT INTO T (A) VALUES ('x')", "INSERT INTO T (A) VALUES ('x')"},
        {"SELECT [A+B], \"C+D\" FROM T", "SELECT [A+B], \"C+D\" FROM T"},
        {"SELECT A FROM T WHERE A = 'never closed + ", "SELECT A FROM T WHERE A = 'never closed + "},
        {"DELETE FROM T; DELETE FROM U", "DELETE FROM T; DELETE FROM U"},
        {"", ""},
        {" ; ", ""},
    };
    for (const auto& [system, sqlite] : cases)
        EXPECT_EQ(TranslateSql(system), sqlite) << system;
}

TEST(SqlDialect, SpellsOutALiteralThatHoldsANul) {
    EXPECT_EQ(TranslateSql(Text("A = 'a\0'''", 10)), "A = CAST(X'610027' AS TEXT) COLLATE NOCASE");
    EXPECT_EQ(TranslateSql(Text("A = '\0\xC4'", 8)), "A = CAST(X'00C384' AS TEXT) COLLATE NOCASE");
}

TEST(SqlDialect, TellsWhoseRowsAreShown) {
    const Translated cases[] = {
        {"SELECT * FROM T", "T"},
        {"select top 1 A, T.B, [C] from [My Table] where (A = 1) order by B;", "[My Table]"},
        {"SELECT * FROM T WHERE N IN (SELECT Max(U.N) AS M FROM U GROUP BY U.K) AND A = 'x'", "T"},
        {"SELECT * FROM T WHERE A = 'UNION' ORDER BY A", "T"},
        {"SELECT Max(N) FROM T", ""},
        {"SELECT A+B FROM T", ""},
        {"SELECT A AS B FROM T", ""},
        {"SELECT DISTINCT A FROM T", ""},
        {"SELECT A FROM T WHERE A = 1 GROUP BY A", ""},
        {"SELECT A FROM T WHERE A = 1 UNION SELECT B FROM U", ""},
        {"SELECT * FROM T, U", ""},
        {"SELECT * FROM T INNER JOIN U ON T.A = U.A", ""},
        {"SELECT * FROM (SELECT * FROM T)", ""},
        {"SELECT 1", ""},
        {"DELETE FROM T", ""},
        {"", ""},
    };
    for (const auto& [sql, table] : cases)
        EXPECT_EQ(ShownTable(sql), table) << sql;
}

TEST(SqlDialect, KnowsANameFromAStatement) {
    EXPECT_EQ(SingleName(" Settings "), "Settings");
    EXPECT_EQ(SingleName("[My Table]"), "[My Table]");
    EXPECT_EQ(SingleName("DELETE T"), "");
    EXPECT_EQ(SingleName(" "), "");
}

}  // namespace
}  // namespace rvl
