#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

#include "CommandLog.h"
#include "TestHospital.h"
#include "components/builtin/clsResultViewer.h"
#include "db/Recordset.h"
#include "print/ReportPreview.h"

using namespace Qt::StringLiterals;

// The laboratory's window over the demo hospital.
class tst_clsResultViewer final : public QObject {
    Q_OBJECT
private slots:
    void Result_isAskedForByWhatWasGiven() {
        const TestHospital hospital;
        components::clsResultViewer viewer;
        viewer.SetSQLConnection(hospital.Connect());
        viewer.SetHospitalNumber(u"H'1"_s);
        viewer.SetIDNumber(u"A1B"_s);
        viewer.SetPatientName(u"O'HARA, <b>Ana</b>"_s);
        viewer.SetCSnumber({});
        viewer.SetAutoprint(true);
        QStringList captions;
        QTimer watch;
        connect(&watch, &QTimer::timeout, &watch, [&captions] {
            if (auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                captions << window->windowTitle();
                QVERIFY(window->findChild<print::ReportPreview*>());
                window->reject();
            }
        });
        watch.start(0);
        const CommandLog log;
        // What is not given anew stays from the result before.
        for (const char* request : {"L1", "L2"}) {
            viewer.SetRequestNum(QLatin1String(request));
            viewer.Show_Results();
        }
        QCOMPARE(captions, QStringList(2, u"Laboratory Result - O'HARA, <b>Ana</b>"_s));
        QCOMPARE(log.Sent.filter(u"sp_Lab_Result"_s),
                 QStringList({u"PATIENT_DATA..sp_Lab_Result 'H''1','A1B','L1',''"_s,
                              u"PATIENT_DATA..sp_Lab_Result 'H''1','A1B','L2',''"_s}));
    }

    void NoConnection_isAnError() {
        QVERIFY_EXCEPTION_THROWN(components::clsResultViewer().Show_Results(), base::RuntimeError);
        QVERIFY(!QApplication::activeModalWidget());
    }
};

QTEST_MAIN(tst_clsResultViewer)
#include "tst_clsResultViewer.moc"
