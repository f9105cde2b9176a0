#include <QDirIterator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// The house keeps its order: what a folder may include, and what only one folder may touch.

namespace {

/// Words, and the folders that alone may say them.
const std::vector<std::pair<QRegularExpression, QStringList>> kReserved{
    {QRegularExpression(u"sqlite3\\.h|sqlite3_"_s), {u"embedded"_s}},
    {QRegularExpression(u"#include <sql(ext|types|ucode)?\\.h>"_s), {u"db"_s}},
    {QRegularExpression(u"QMessageBox|QFileDialog"_s), {u"toolkit"_s}},
    {QRegularExpression(u"currentDateTime|QDate::currentDate"_s), {u"base"_s, u"print"_s}},
    {QRegularExpression(u"<(unistd|fcntl|sys/[a-z]+|pthread|dlfcn)\\.h>"_s), {}}};

int FloorOf(const QString& folder) {
    static const QStringList floors = QStringLiteral(CAPD_FLOOR_LIST).split(u',');
    for (int floor = 0; floor < floors.size(); ++floor)
        if (floors[floor].split(u'+').contains(folder))
            return floor;
    return -1;
}

bool RunsUpward(const QString& line, const QString& own) {
    static const QRegularExpression include(u"^\\s*#include \"([^/\"]+)/"_s);
    const auto match = include.match(line);
    const QString used = match.captured(1);
    return match.hasMatch() && used != own && (FloorOf(used) < 0 || FloorOf(used) >= FloorOf(own));
}

bool IsMisplaced(const QString& line, const QString& own) {
    return std::any_of(kReserved.begin(), kReserved.end(), [&](const auto& reserved) {
        return line.contains(reserved.first) && !reserved.second.contains(own);
    });
}

/// Each line of the sources that breaks the order.
QStringList Faults(const QDir& root) {
    QStringList faults;
    QDirIterator walk(root.path(), {u"*.h"_s, u"*.cpp"_s}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        const QString path = root.relativeFilePath(file.fileName());
        const QString own = path.section(u'/', 0, 0);
        if (!file.open(QIODevice::ReadOnly))
            faults << path;
        for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n'))
            if (RunsUpward(line, own) || IsMisplaced(line, own))
                faults << path + u": "_s + line.trimmed();
    }
    faults.sort();
    return faults;
}

}  // namespace

class tst_House final : public QObject {
    Q_OBJECT

private slots:
    void Sources_keepTheOrder() {
        const QDir sources(QStringLiteral(CAPD_SOURCE_DIR "/src"));
        QVERIFY(sources.exists(u"app/main.cpp"_s));
        QCOMPARE(Faults(sources), QStringList());
    }

    void Faults_areNamed() {
        QTemporaryDir dir;
        const std::pair<QString, QByteArray> sources[] = {
            {u"db/Good.cpp"_s, "#include \"base/Errors.h\"\n#include <sql.h>\n"},
            {u"db/Up.cpp"_s, "#include \"toolkit/MsgBox.h\"\n"},
            {u"patients/Sideways.cpp"_s, "#include \"funds/modCDF.h\"\n"},
            {u"db/Words.cpp"_s, "#include <sqlite3.h>\nQMessageBox box;\n"}};
        for (const auto& [path, text] : sources) {
            QDir(dir.path()).mkpath(path.section(u'/', 0, 0));
            QFile file(dir.filePath(path));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
        }
        QCOMPARE(Faults(QDir(dir.path())),
                 (QStringList{u"db/Up.cpp: #include \"toolkit/MsgBox.h\""_s,
                              u"db/Words.cpp: #include <sqlite3.h>"_s,
                              u"db/Words.cpp: QMessageBox box;"_s,
                              u"patients/Sideways.cpp: #include \"funds/modCDF.h\""_s}));
    }
};

QTEST_GUILESS_MAIN(tst_House)
#include "tst_House.moc"
