#include <QDirIterator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// The house keeps its order: what a folder may include, and what only one folder may touch.

namespace {

// Which folder alone may say a word.
struct Reserved {
    QRegularExpression Word;
    QStringList Folders;
};

const std::vector<Reserved>& ReservedWords() {
    static const std::vector<Reserved> words{
        {QRegularExpression(u"sqlite3\\.h|sqlite3_"_s), {u"embedded"_s}},
        {QRegularExpression(u"#include <sql(ext|types|ucode)?\\.h>"_s), {u"db"_s}},
        {QRegularExpression(u"QMessageBox|QFileDialog"_s), {u"toolkit"_s}},
        {QRegularExpression(u"currentDateTime|QDate::currentDate"_s), {u"base"_s, u"print"_s}},
        {QRegularExpression(u"<(unistd|fcntl|sys/[a-z]+|pthread|dlfcn)\\.h>"_s), {}}};
    return words;
}

QStringList SourceFiles(const QString& root) {
    QStringList files;
    QDirIterator walk(root, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files << walk.next();
    files.sort();
    return files;
}

QString FolderOf(const QString& file, const QString& root) {
    return QDir(root).relativeFilePath(file).section(u'/', 0, 0);
}

QStringList LinesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n')
                                          : QStringList();
}

int FloorOf(const QString& folder) {
    static const QStringList floors = QStringLiteral(CAPD_FLOOR_LIST).split(u',');
    for (int floor = 0; floor < floors.size(); ++floor)
        if (floors[floor].split(u'+').contains(folder))
            return floor;
    return -1;
}

QStringList UpwardIncludes(const QString& root) {
    static const QRegularExpression include(u"^\\s*#include \"([^/\"]+)/"_s);
    QStringList faults;
    for (const QString& file : SourceFiles(root)) {
        const QString own = FolderOf(file, root);
        for (const QString& line : LinesOf(file)) {
            const auto match = include.match(line);
            if (!match.hasMatch())
                continue;
            const QString used = match.captured(1);
            if (used != own && (FloorOf(used) < 0 || FloorOf(used) >= FloorOf(own)))
                faults << u"%1: %2"_s.arg(file, line.trimmed());
        }
    }
    return faults;
}

QStringList MisplacedWords(const QString& root) {
    QStringList faults;
    for (const QString& file : SourceFiles(root))
        for (const QString& line : LinesOf(file))
            for (const Reserved& reserved : ReservedWords())
                if (line.contains(reserved.Word) &&
                    !reserved.Folders.contains(FolderOf(file, root)))
                    faults << u"%1: %2"_s.arg(file, line.trimmed());
    return faults;
}

void Write(const QString& path, const QByteArray& text) {
    QVERIFY(QFileInfo(path).dir().mkpath(u"."_s));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

const QString kSources = QStringLiteral(CAPD_SOURCE_DIR "/src");

}  // namespace

class tst_House final : public QObject {
    Q_OBJECT

private slots:
    void Includes_runDownward() {
        QVERIFY(SourceFiles(kSources).size() > 50);
        QCOMPARE(UpwardIncludes(kSources), QStringList());
    }

    void Includes_thatRunUpwardAreNamed() {
        QTemporaryDir dir;
        Write(dir.filePath(u"db/Good.cpp"_s), "#include \"base/Errors.h\"\n");
        Write(dir.filePath(u"db/Bad.cpp"_s), "#include \"toolkit/MsgBox.h\"\n");
        Write(dir.filePath(u"patients/Sideways.cpp"_s), "#include \"funds/modCDF.h\"\n");
        QCOMPARE(UpwardIncludes(dir.path()).size(), 2);
    }

    void Symbols_stayInTheirFolder() { QCOMPARE(MisplacedWords(kSources), QStringList()); }

    void Symbols_elsewhereAreNamed() {
        QTemporaryDir dir;
        Write(dir.filePath(u"db/Bad.cpp"_s),
              "#include <sqlite3.h>\nQMessageBox box;\n#include <sql.h>\n");
        QCOMPARE(MisplacedWords(dir.path()).size(), 2);
    }
};

QTEST_GUILESS_MAIN(tst_House)
#include "tst_House.moc"
