#include "sample_catalog.h"

#include "platform/base/error.h"
#include "platform/tsql/front_end.h"

#include "tests/support/rows.h"
#include <QRegularExpression>
#include <QTest>

#include <random>
#include <set>

using zel::test::columns;
using zel::test::fill;

using zel::Sql;

/// Hostile texts in every place where typed or stored text meets a statement: they are data, or they are
/// refused before any engine sees them.
class tst_text_guard : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { m_catalog = std::make_unique<SampleCatalog>(); }
    void searches_data();
    void searches();
    void numbers_data();
    void numbers();
    void dates_data();
    void dates();
    void counts_data();
    void counts();
    void titles_data();
    void titles();
    void serverCalls_data();
    void serverCalls();
    void oldPasswords_data();
    void oldPasswords();
    void numbersOnTheirPlaces();
    void anyTextIsDataOrRefused();

private:
    /// The number of the failure that the front end alone raises; 0 when the text gets through.
    [[nodiscard]] int refusal(const Sql &text);

    std::unique_ptr<SampleCatalog> m_catalog;
};

namespace {

struct Hostile {
    const char *name;
    QString text;
    int inText;             ///< 0 where it is data between quotes, else the failure
    std::set<int> inNumber; ///< failures allowed in a number's place
    [[nodiscard]] QString data() const {
        return QString(text).replace(QLatin1String("''"), QLatin1String("'"));
    }
};

std::vector<Hostile> hostile() {
    constexpr int Long = 100'000;
    return {
        {"apostrophe", "'", 105, {105}},
        {"two apostrophes", "O''BRIEN", 0, {102}},
        {"three apostrophes", "A'''B", 105, {105}},
        {"true", "x' or '1'='1", 102, {102}},
        {"true number", "1 or 1=1", 0, {102}},
        {"second statement", "'; delete from Accounts --", 102, {105}},
        {"second statement behind a number", "1; delete from Accounts", 0, {102}},
        {"second statement behind a blank", "1 delete from Accounts", 0, {102}},
        {"union", "1 union select Pswd from LctPswd", 0, {102}},
        {"line comment", "--", 0, {102, 156}},
        {"number and line comment", "1--", 0, {102}},
        {"comment", "/* */", 0, {102, 156}},
        {"open comment", "/*", 0, {102, 113}},
        {"closed and commented", "%' --", 102, {102, 105}},
        {"column", "AppID", 0, {207}},
        {"word", "ABC", 0, {207}},
        {"function", "getdate()", 0, {102, 207}},
        {"variable", "@@version", 0, {102, 137, 207}},
        {"bracket", "[", 0, {102, 105}},
        {"bracketed column", "[AppID]", 0, {102, 207}},
        {"quoted column", "\"AppID\"", 0, {102, 207}},
        {"two numbers", "1,2", 0, {102}},
        {"sum", "1+1", 0, {102}},
        {"parenthesis", "1)", 0, {102}},
        {"new line", "1\n or 1=1", 0, {102}},
        {"nothing", "", 0, {102, 156}},
        {"100 kB of a word", QString(Long, u'X'), 0, {207}},
        {"100 kB of text", QStringLiteral("X Y ").repeated(Long / 4), 0, {102}},
        {"beyond ASCII", QStringLiteral("1\u00A0or\uFF071\uFF07=1"), 0, {102, 207}},
    };
}

bool equalAsText(QString left, QString right) {
    while (left.endsWith(u' '))
        left.chop(1);
    while (right.endsWith(u' '))
        right.chop(1);
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

/// A plain reading of `like`: the texts here hold no set but the open bracket, which matches nothing.
bool isLike(const QString &value, const QString &pattern) {
    if (pattern.isEmpty())
        return value.trimmed().isEmpty();
    if (pattern.contains(u'[') && !pattern.contains(u']'))
        return false;
    if (pattern[0] == u'[') {
        const auto end = pattern.indexOf(u']');
        return !value.isEmpty() && pattern.mid(1, end - 1).contains(value[0], Qt::CaseInsensitive) &&
               isLike(value.mid(1), pattern.mid(end + 1));
    }
    if (pattern[0] == u'%') {
        for (qsizetype skipped = 0; skipped <= value.size(); ++skipped) {
            if (isLike(value.mid(skipped), pattern.mid(1)))
                return true;
        }
        return false;
    }
    return !value.isEmpty() && (pattern[0] == u'_' || pattern[0].toCaseFolded() == value[0].toCaseFolded()) &&
           isLike(value.mid(1), pattern.mid(1));
}

/// Where a text stands between quotes. `pairs` gives for all rows that the statement may ever show the value
/// of its column `key` and the text that is compared.
struct TextPlace {
    const char *name;
    std::string before;
    std::string after;
    const char *pairs;
    const char *key;
    bool blanksRemoved = false;
};

std::string day(const std::string &column) {
    return "right('0' + rtrim(day(" + column + ")),2) + '-' + right('0' + rtrim(month(" + column +
           ")),2) + '-' + rtrim(year(" + column + "))";
}

std::string vouchers(const std::string &kind) {
    return "Select VouNo," + day("VouDate") +
           " as VouDate,PaidReceive,TotalAmount,Multi=case When (select count(vouno) from detjv where "
           "voustatus='" +
           kind + "' and vouno=a.vouno and DrAmt>0) > 1 then 'M' end  From MasJv a  Where VouStatus='" +
           kind + "' And ";
}

const std::string Finder = "Select RowID,AcNodes,AcName,OpenBal,Contact,Fax,Addr,Addr2 From Accounts Where ";
const std::string Subjects =
    "Select SubId,Course=(Select CourseName From tblCourse Where CourseId = "
    "a.CourseId),SubName,CourseDurration=(Select "
    "Coursedurration From tblCourse Where CourseId = a.CourseId),TotAmt from tblSubject a where ";
const std::string Applications = "select AppID,RegNo," + day("FixDate") + " as FixDt," + day("AppDate") +
                                 " as AppDate,StuName,FatherName,CellNo,TotAmt,CashReceive From tblMasApp";
const std::string Forms =
    "select FormID," + day("FormDate") +
    " as FrmDate,AppID,Student=(select StuName From tblMasApp Where AppId = a.Appid) From "
    "tblMasCarryForw a where ";
const std::string Directory = "select "
                              "Row_No,Code_No,Client_Name,Company,Contact_Per,Tele_No,Mob_No,Fax_NO,Email,"
                              "WebSite,Location,City,Country,"
                              "Address from tbl_Tele_Directory where ";

const TextPlace TextPlaces[] = {
    {"session name", "select SessionId,SessionName from tblSession where SessionName like '%",
     "%' order by SessionId desc ", "select SessionId,SessionName from tblSession", "SessionId"},
    {"session number", "select SessionId,SessionName from tblSession where SessionId like '%",
     "%' order by SessionId desc ", "select SessionId,SessionId from tblSession", "SessionId"},
    {"course name",
     "select CourseId,CourseName,Coursedurration,MonthYear from tblCourse where CourseName like '%",
     "%' order by CourseId desc ", "select CourseId,CourseName from tblCourse", "CourseId"},
    {"course number",
     "select CourseId,CourseName,Coursedurration,MonthYear from tblCourse where CourseId like '%",
     "%' order by CourseId desc ", "select CourseId,CourseId from tblCourse", "CourseId"},
    {"subject name",
     "select SubId,Course=(Select CourseName From tblCourse Where CourseId = "
     "a.CourseId),SubName,TotAmt,a.CourseId "
     "from tblSubject a where SubName like '%",
     "%' order by SubId desc ", "select SubId,SubName from tblSubject", "SubId"},
    {"subject number",
     "select SubId,Course=(Select CourseName From tblCourse Where CourseId = "
     "a.CourseId),SubName,TotAmt,a.CourseId "
     "from tblSubject a where SubId like '%",
     "%' order by SubId desc ", "select SubId,SubId from tblSubject", "SubId"},
    {"account search",
     "Select RowID,AcNodes,AcName,Location,Contact,Fax,Email,OpenBal,Addr,Addr2,ParentID,AcNodes From "
     "Accounts Where "
     "acStatus='DD' and AcName Like '%",
     "%' order by AcName", "select RowID,AcName from Accounts where AcStatus='DD'", "RowID"},
    {"finder: bank", Finder + "acStatus='DD'  and BStatus='B' and AcName Like '%", "%' order by AcName",
     "select RowID,AcName from Accounts where AcStatus='DD' and BStatus='B'", "RowID"},
    {"finder: supplier", Finder + "acStatus='DD'  and BStatus='S' and AcName Like '%", "%' order by AcName",
     "select RowID,AcName from Accounts where AcStatus='DD' and BStatus='S'", "RowID"},
    {"finder: sub-control", Finder + "acStatus='HD'  and AcName Like '%", "%' order by AcName",
     "select RowID,AcName from Accounts where AcStatus='HD'", "RowID"},
    {"finder: any", Finder + "acStatus='DD'  and AcName Like '%", "%' order by AcName",
     "select RowID,AcName from Accounts where AcStatus='DD'", "RowID"},
    {"voucher number", vouchers("BP") + "convert(varchar(8),VouNo) Like '%", "%' order by VouNo desc",
     "select VouNo,VouNo from MasJV where VouStatus='BP'", "VouNo"},
    {"voucher name", vouchers("BP") + "PaidReceive Like '%", "%' order by VouNo desc",
     "select VouNo,PaidReceive from MasJV where VouStatus='BP'", "VouNo"},
    {"slip", vouchers("FR") + "SlipNo Like '%", "%' order by VouNo desc",
     "select VouNo,SlipNo from MasJV where VouStatus='FR'", "VouNo"},
    {"subject finder: course", Subjects + "CourseId = 1 and subName Like '%", "%' order by subName",
     "select SubId,SubName from tblSubject where CourseId=1", "SubId"},
    {"subject finder: application",
     Subjects + "SubID in (select SubID From tblDetApp where AppID = 1 And not InActive  is null) and "
                "subName Like '%",
     "%' order by subName", "select SubId,SubName from tblSubject where SubId=2", "SubId"},
    {"application: student", Applications + " where StuName like '%", "%' Order by AppID Desc",
     "select AppID,StuName from tblMasApp", "AppID"},
    {"application: cell", Applications + " where CellNo like '%", "%' Order by AppID Desc",
     "select AppID,CellNo from tblMasApp", "AppID"},
    {"application: registration", Applications + " where RegNo like '%", "%' Order by AppID Desc",
     "select AppID,RegNo from tblMasApp", "AppID"},
    {"form: student", Forms + "AppID In (select AppId From tblMasApp Where StuName like '%",
     "%')  Order by a.FormDate Desc",
     "select FormID,(select StuName from tblMasApp where AppID=a.AppID) from tblMasCarryForw a", "FormID"},
    {"user name",
     "select Row_No,User_Code,User_Name,Designation,PassWard,Status from User_Information where User_Name "
     "like '%",
     "%' order by User_Code desc", "select Row_No,User_Name from User_Information", "Row_No"},
    {"designation",
     "select Row_No,User_Code,User_Name,Designation,PassWard,Status from User_Information where Designation "
     "like '%",
     "%' order by User_Code desc", "select Row_No,Designation from User_Information", "Row_No"},
    {"company",
     "Select CompCode,Company,comTel,comFax,comAddr,comActive,comTax,comNTN,comEmail,comWebSite from Company "
     "where "
     "Company like '%",
     "%' order by Company", "select CompCode,Company from Company", "CompCode"},
    {"directory: client", Directory + "Client_Name like '%", "%' order by Code_No desc",
     "select Row_No,Client_Name from tbl_Tele_Directory", "Row_No"},
    {"directory: company", Directory + "Company like '%", "%' order by Code_No desc",
     "select Row_No,Company from tbl_Tele_Directory", "Row_No"},
    {"directory: telephone", Directory + "Tele_No like '%", "%' order by Code_No desc",
     "select Row_No,Tele_No from tbl_Tele_Directory", "Row_No"},
    {"lock", "Select * From LctPswd Where Pswd= '", "'", "select Pswd,Pswd from LctPswd", "Pswd"},
    {"title taken", "Select AcName From Accounts where replace(acname,' ', '') = '", "'",
     "select AcName,AcName from Accounts", "AcName", true},
    {"student taken", "select AcName from Accounts Where replace(acname ,' ', '') = '",
     "' and ParentID = '1.2'", "select AcName,AcName from Accounts where ParentID='1.2'", "AcName", true},
    {"account of a student", "Select RowID From Accounts where replace(acname,' ' , '') = '", "'",
     "select RowID,AcName from Accounts", "RowID", true},
    {"user taken", "Select User_Name From User_Information Where Replace(User_Name,' ' ,'') = '", "'",
     "select User_Name,User_Name from User_Information", "User_Name", true},
    {"registration number",
     "Select PlotNo,Type,CusCode, CusName =(select AcName From Accounts where RowID = a.CusCode), "
     "Cata=(Select Status "
     "From tblCatagory where CataID =a.CataID),Size=(Select Catagory From tblCatagory where CataID "
     "=a.CataID) From "
     "tblApplication a Where replace(a.RegNo, ' ', '')  = '",
     "'", "select PlotNo,RegNo from tblApplication", "PlotNo", true},
    {"title of a code", "select acname from accounts where acnodes='", "'",
     "select AcName,AcNodes from Accounts", "acname"},
    {"head account of a student",
     "select AcName from Accounts Where replace(acname ,' ', '') = 'ALIRAZA' and ParentID = '", "'",
     "select AcName,ParentID from Accounts where AcName='ALI RAZA'", "AcName"},
};

/// Where a stored code stands between quotes and rows are counted.
struct CountPlace {
    const char *name;
    const char *before;
    const char *after;
    const char *texts; ///< of all rows that may be counted
};

constexpr CountPlace CountPlaces[] = {
    {"children of a code", "select count(dcode) as chkNod from accounts where acnodes like '", ".%'",
     "select AcNodes from Accounts where Dcode is not null"},
    {"children of a parent", "select count(dcode) as chkLvl from accounts where  parentid='",
     "' and dcode<>0", "select ParentID from Accounts where Dcode<>0"},
    {"next child, less one", "Select isnull(max(dcode),0) as Dcode from  accounts where rtrim(parentid)='",
     "' and 0=1", "select ParentID from Accounts where 0=1"},
};

struct NumberPlace {
    const char *name;
    std::string before;
    std::string after;
};

const NumberPlace NumberPlaces[] = {
    {"session", "select * from tblSession where SessionId =", ""},
    {"session deleted", "Delete From tblSession Where SessionId = ", " "},
    {"course", "select * from tblCourse where CourseId =", ""},
    {"course deleted", "Delete From tblCourse Where CourseId = ", " "},
    {"subject", "select * from tblSubject where SubId =", ""},
    {"subject deleted", "Delete From tblSubject Where SubId = ", " "},
    {"account", "select * from accounts where rowid = ", ""},
    {"account's lines", "Select accode from detjv where accode = ", ""},
    {"account's applications", "Select CusCode from tblMasApp where CusCode = ", ""},
    {"account deleted", "Delete Accounts where rowid = ", ""},
    {"account of an application deleted", "Delete From Accounts Where RowId = ", ""},
    {"order of an account", "Update Accounts set AcName = 'ASSETS', OrderStatus = ", " where rowid = 1"},
    {"account renamed", "Update Accounts set AcName = 'ASSETS', OrderStatus =null where rowid = ", ""},
    {"voucher", "Select * From MasJv Where VouNo = ", " And VouStatus = 'BP' "},
    {"voucher's lines",
     "Select AcCode,AcNames=(Select AcName From Accounts Where RowId = "
     "AcCode),DrAmt,CrAmt,ChecqNo,Naration,BillNo,"
     "FileNo From DetJv Where VouNo = ",
     " And VouStatus = 'CP' Order By EntryNo "},
    {"voucher's lines deleted", "Delete From DetJV where VouNo=", " And VouStatus='BP'"},
    {"voucher deleted", "Delete From MasJV where VouNo=", " And VouStatus='BP'"},
    {"journal of an application deleted", "Delete From Detjv Where Vouno = ", ""},
    {"subject finder", Subjects + "CourseId = ", " and subName Like '%%' order by subName"},
    {"inactive subjects", Subjects + "SubID in (select SubID From tblDetApp where AppID = ",
     " And not InActive  is null) and subName Like '%%' order by subName"},
    {"application search", Applications + " where AppID = ", " Order by AppID Desc"},
    {"application", "Select  *  From tblMasApp Where AppID =  ", ""},
    {"application deleted", "Delete From tblMasApp where AppId=", ""},
    {"application's lines deleted", "Delete From tblDetApp where AppID = ", ""},
    {"account in use", "select AcCode From detjv where AcCode = ", " And VouStatus <> 'AR'"},
    {"student's session", "select SessionID,AppID from tblMasApp Where CusCode = ", ""},
    {"student's subjects",
     "select subid,subname from tblsubject where subid in (select subid from tbldetapp where appid in "
     "(select appid "
     "from tblmasapp where cuscode = ",
     "))"},
    {"form search", Forms + "FormID = ", " Order by a.FormDate Desc"},
    {"form deleted", "Delete From tblMasCarryForw Where FormID = ", ""},
    {"form's journal deleted", "Delete From DetJV Where VouNo = ", " And VouStatus = 'CF'"},
    {"subjects of a course", "Select SubId,SubName From tblSubject Where CourseID = ", " Order By SubName"},
    {"user", "select * from User_Information where Row_No =", ""},
    {"user deleted", "Delete From User_Information Where Row_No = ", " "},
    {"company", "Select * from Company where CompCode =", ""},
    {"company deleted", "Delete From Company where CompCode=", ""},
    {"directory", "select * from tbl_Tele_Directory where Row_no =", ""},
    {"directory deleted", "Delete From tbl_Tele_Directory Where Row_no = ", " "},
    {"ledger", "exec AcLedger ", ",'2024-01-01','2024-12-31'"},
    {"detail ledger", "exec DetailAcLedger 4,", ",1,2024,31,12,2024"},
    {"detail ledger, at the end", "exec DetailAcLedger 4,1,1,2024,31,12,", ""},
    {"fees by student", "exec CreatStuWiseDet ", ",0,0 "},
    {"fees by student, at the end", "exec CreatStuWiseDet 1, 1, ", ""},
};

const NumberPlace DatePlaces[] = {
    {"voucher search", vouchers("BP") + "VouDate = '", "' order by VouNo desc"},
    {"application search", Applications + " a where fixDate = '", "' order by AppID desc"},
    {"form search", Forms + "FormDate = '", "' Order by a.FormDate Desc"},
    {"vouchers removed", "Delete From MasJV Where VouDate Between '", "' And '2024-12-31'"},
    {"lines removed", "Delete From DetJV Where VouDate Between '2024-01-01' And '", "'"},
    {"trial balance", "exec TrialBalance '", "','2024-12-31'"},
    {"trial balance with opening", "exec TrialBalance3 '2024-01-01','", "'"},
    {"ledger", "exec AcLedger 4,'", "','2024-12-31'"},
};

Sql built(const std::string &before, const QString &foreign, const std::string &after) {
    return Sql::trusted(before) + foreign + Sql::trusted(after);
}

} // namespace

int tst_text_guard::refusal(const Sql &text) {
    try {
        m_catalog->driver().refresh();
        (void)zel::tsql::translate(text, m_catalog->driver(), zel::tsql::sqlite());
    } catch (const zel::Error &error) {
        return error.number();
    }
    return 0;
}

void tst_text_guard::searches_data() {
    columns<int, int>("place", "text");
    int placeNumber = 0;
    for (const TextPlace &place : TextPlaces) {
        int textNumber = 0;
        for (const Hostile &text : hostile())
            fill(QTest::addRow("%s: %s", place.name, text.name), placeNumber, textNumber++);
        ++placeNumber;
    }
}

void tst_text_guard::searches() {
    QFETCH(int, place);
    QFETCH(int, text);
    const TextPlace &at = TextPlaces[std::size_t(place)];
    const Hostile typed = hostile()[std::size_t(text)];
    const QString foreign = at.blanksRemoved ? QString(typed.text).remove(u' ') : typed.text;
    const Sql statement = built(at.before, foreign, at.after);
    QCOMPARE(refusal(statement), typed.inText);
    if (typed.inText != 0)
        return;

    const QByteArray before = m_catalog->checksum();
    const Answer answer = m_catalog->run(statement);
    QVERIFY2(answer.ok(), qPrintable(answer.description));
    QCOMPARE(m_catalog->checksum(), before);

    const Answer all = m_catalog->run(Sql::trusted(at.pairs));
    QVERIFY2(all.ok(), qPrintable(all.description));
    const QString data = at.blanksRemoved ? typed.data().remove(u' ') : typed.data();
    const bool searched = at.after.starts_with('%');
    QStringList expected;
    for (qsizetype row = 0; row < all.rows->rowCount(); ++row) {
        if (all.rows->isNull(row, 1))
            continue;
        QString value = all.rows->text(row, 1);
        if (at.blanksRemoved)
            value.remove(u' ');
        if (searched ? isLike(value, u'%' + data + u'%') : equalAsText(value, data))
            expected += all.rows->text(row, 0);
    }
    QStringList shown;
    const int key = answer.rows->columnIndex(QString::fromLatin1(at.key));
    QVERIFY(key >= 0);
    for (qsizetype row = 0; row < answer.rows->rowCount(); ++row)
        shown += answer.rows->text(row, key);
    expected.sort();
    shown.sort();
    QCOMPARE(shown, expected);
}

void tst_text_guard::numbers_data() {
    columns<int, int>("place", "text");
    int placeNumber = 0;
    for (const NumberPlace &place : NumberPlaces) {
        int textNumber = 0;
        for (const Hostile &text : hostile())
            fill(QTest::addRow("%s: %s", place.name, text.name), placeNumber, textNumber++);
        ++placeNumber;
    }
}

void tst_text_guard::numbers() {
    QFETCH(int, place);
    QFETCH(int, text);
    const NumberPlace &at = NumberPlaces[std::size_t(place)];
    const Hostile typed = hostile()[std::size_t(text)];
    const int number = refusal(built(at.before, typed.text, at.after));
    QVERIFY2(typed.inNumber.contains(number), qPrintable(QString::number(number)));
}

void tst_text_guard::dates_data() {
    columns<int, int>("place", "text");
    int placeNumber = 0;
    for (const NumberPlace &place : DatePlaces) {
        int textNumber = 0;
        for (const Hostile &text : hostile())
            fill(QTest::addRow("%s: %s", place.name, text.name), placeNumber, textNumber++);
        ++placeNumber;
    }
}

/// A text that is no date fails with 241, whoever finds it out; '' is a date.
void tst_text_guard::dates() {
    QFETCH(int, place);
    QFETCH(int, text);
    const NumberPlace &at = DatePlaces[std::size_t(place)];
    const Hostile typed = hostile()[std::size_t(text)];
    const Sql statement = built(at.before, typed.text, at.after);
    if (typed.inText != 0) {
        QCOMPARE(refusal(statement), typed.inText);
        return;
    }
    const QByteArray before = m_catalog->checksum();
    m_catalog->begin();
    const Answer answer = m_catalog->run(statement);
    m_catalog->undo();
    QCOMPARE(answer.error.value_or(0), typed.text.isEmpty() ? 0 : 241);
    QCOMPARE(m_catalog->checksum(), before);
}

void tst_text_guard::counts_data() {
    columns<int, int>("place", "text");
    int placeNumber = 0;
    for (const CountPlace &place : CountPlaces) {
        int textNumber = 0;
        for (const Hostile &text : hostile())
            fill(QTest::addRow("%s: %s", place.name, text.name), placeNumber, textNumber++);
        ++placeNumber;
    }
}

void tst_text_guard::counts() {
    QFETCH(int, place);
    QFETCH(int, text);
    const CountPlace &at = CountPlaces[std::size_t(place)];
    const Hostile typed = hostile()[std::size_t(text)];
    const Sql statement = built(at.before, typed.text, at.after);
    QCOMPARE(refusal(statement), typed.inText);
    if (typed.inText != 0)
        return;
    const Answer answer = m_catalog->run(statement);
    QVERIFY2(answer.ok(), qPrintable(answer.description));
    const Answer all = m_catalog->run(Sql::trusted(at.texts));
    const bool searched = std::string_view(at.after).starts_with('.');
    int expected = 0;
    for (qsizetype row = 0; row < all.rows->rowCount(); ++row) {
        const QString value = all.rows->text(row, 0);
        expected +=
            searched ? isLike(value, typed.data() + QStringLiteral(".%")) : equalAsText(value, typed.data());
    }
    QCOMPARE(answer.rows->value(0, 0).integer(), expected);
}

void tst_text_guard::serverCalls_data() {
    titles_data();
}

/// Names and passwords of logins between quotes: they arrive as they were typed, or nothing is called.
void tst_text_guard::serverCalls() {
    QFETCH(int, text);
    const Hostile typed = hostile()[std::size_t(text)];
    const std::pair<Sql, std::size_t> calls[] = {
        {built("sp_addlogin '", typed.text, "','PASS1','Ward_System'"), 0},
        {built("sp_addlogin 'NAME','", typed.text, "','Ward_System'"), 1},
        {built("sp_adduser '", typed.text, "'"), 0},
        {built("Sp_AddSrvroleMember '", typed.text, "','sysadmin'"), 0},
        {built("sp_password OLD,'", typed.text, "','NAME'"), 1},
        {built("sp_password OLD,'NEW','", typed.text, "'"), 2},
    };
    for (const auto &[call, argument] : calls) {
        QCOMPARE(refusal(call), typed.inText);
        if (typed.inText != 0)
            continue;
        const auto statements = zel::tsql::translate(call, m_catalog->driver(), zel::tsql::sqlite());
        QCOMPARE(statements.size(), std::size_t(1));
        QCOMPARE(statements[0].kind, zel::tsql::StatementKind::ServerCall);
        QVERIFY(argument < statements[0].arguments.size());
        QCOMPARE(QString::fromStdString(statements[0].arguments[argument].value_or("")), typed.data());
    }
}

void tst_text_guard::titles_data() {
    QTest::addColumn<int>("text");
    int textNumber = 0;
    for (const Hostile &text : hostile())
        zel::test::row(text.name, textNumber++);
}

/// A title that is written reaches its own row and no other.
void tst_text_guard::titles() {
    QFETCH(int, text);
    const Hostile typed = hostile()[std::size_t(text)];
    const Sql statement = built("Update Accounts set AcName = '", typed.text, "' where rowid=2");
    if (typed.inText != 0) {
        QCOMPARE(refusal(statement), typed.inText);
        return;
    }
    const Sql all = Sql::trusted("select RowID,AcName from Accounts order by RowID");
    QStringList expected = lines(*m_catalog->run(all).rows);
    m_catalog->begin();
    const Answer answer = m_catalog->run(statement);
    const QStringList rows = lines(*m_catalog->run(all).rows);
    m_catalog->undo();
    if (typed.data().size() > 100)
        QCOMPARE(answer.error.value_or(0), 8152);
    else
        expected[1] = "2, '" + typed.data() + u'\'';
    QCOMPARE(rows, expected);
}

void tst_text_guard::oldPasswords_data() {
    titles_data();
}

/// The one place where a word stands for a text: it is that text, whatever it names elsewhere.
void tst_text_guard::oldPasswords() {
    QFETCH(int, text);
    const Hostile typed = hostile()[std::size_t(text)];
    const Sql statement = built("sp_password ", typed.text, ",'NEW','NAME'");
    const bool word = typed.inNumber == std::set<int>{207};
    if (!word) {
        const int number = refusal(statement);
        QVERIFY2(number != 0, "accepted");
        QVERIFY2(number == 102 || number == 105 || number == 113 || number == 137 || number == 156,
                 qPrintable(QString::number(number)));
        return;
    }
    const auto statements = zel::tsql::translate(statement, m_catalog->driver(), zel::tsql::sqlite());
    QCOMPARE(statements.size(), std::size_t(1));
    QCOMPARE(statements[0].kind, zel::tsql::StatementKind::ServerCall);
    QCOMPARE(statements[0].arguments.size(), std::size_t(3));
    QCOMPARE(QString::fromStdString(statements[0].arguments[0].value_or("")), typed.text);
}

/// What the guard must not refuse.
void tst_text_guard::numbersOnTheirPlaces() {
    for (const char *number : {"3", " 3 ", "+3", "03", "3.0", "-3"}) {
        const Answer answer = m_catalog->run(built("select * from tblSession where SessionId =", number, ""));
        QVERIFY2(answer.ok(), number);
        QCOMPARE(answer.rows->rowCount(), *number == '-' ? 0 : 1);
    }
}

void tst_text_guard::anyTextIsDataOrRefused() {
    static const QString Letters = QStringLiteral("--/*[]\";; \t\nA1N0.x=()@#%_\\e+,\u00e9\uff07\u2019");
    static const QRegularExpression Number(QStringLiteral("^\\s*[+-]?\\s*(\\d+\\.?\\d*|\\.\\d+)\\s*$"));
    constexpr int Times = 20'000;
    std::mt19937 random(9);
    const auto any = [&random](qsizetype count) {
        return std::uniform_int_distribution<qsizetype>(0, count - 1)(random);
    };
    int asData = 0;
    for (int i = 0; i < Times; ++i) {
        QString text;
        for (qsizetype length = any(9); length > 0; --length)
            text += Letters[any(Letters.size())];
        const Sql quoted = built("select x='", text, "', y='it''s' --'\n where 1=1");
        if (refusal(quoted) == 0) {
            ++asData;
            const Answer answer = m_catalog->run(quoted);
            QVERIFY2(answer.ok(), qPrintable(text));
            QCOMPARE(answer.rows->text(0, 0), QString(text).replace(QLatin1String("''"), QLatin1String("'")));
            QCOMPARE(answer.rows->text(0, 1), QStringLiteral("it's"));
        } else {
            QVERIFY2(QString(text).remove(QLatin1String("''")).contains(u'\''), qPrintable(text));
        }
        if (refusal(built("select RowID from Accounts where RowID = ", text, " and 1=1")) == 0)
            QVERIFY2(Number.match(text).hasMatch(), qPrintable(text));
    }
    QVERIFY(asData > Times / 10);
}

QTEST_GUILESS_MAIN(tst_text_guard)
#include "tst_text_guard.moc"
