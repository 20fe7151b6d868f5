// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <optional>

/** Takes the place of the host's function: each text is its key, as "module number". */
extern "C" __attribute__((visibility("default"))) const char* zeb__nls_nlst(const char* key)
{
    static QHash<QString, QByteArray> texts;
    const QStringList fields = QString(key).split("@$@#");
    const bool isKey = fields.size() == 5 && fields[0].isEmpty() && fields[2] == "GENERAL";
    QByteArray& text = texts[key];
    text = isKey ? QString(fields[1] + ' ' + fields[3]).toUtf8() : "no key";
    return text.constData();
}

/** What the forms offer to translators and to drivers from outside. */
class TestForms : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        mHost.emplace();
        mHost->write("brox.xml", modelsXml({modelXml("a"), modelXml("b")}));
        mViewer = mHost->viewer();
    }

    void cleanup() { mHost.reset(); }

    void texts()
    {
        constexpr struct
        {
            const char* object;
            const char* property;
            const char* key;
        } texts[] = {
            {"loadToolButton", "toolTip", "brox_viewer 274"},
            {"saveToolButton", "toolTip", "brox_viewer 278"},
            {"actionNew_Model", "text", "brox_model_manager 139"},
            {"label_2", "text", "brox_amounts 82"},
            {"label_3", "text", "brox_tester 82"},
            {"recalcPushButton", "text", "brox_job_data 153"},
            {"useBitFileCheckBox", "text", "brox_dhs 110"},
            {"openBitFileToolButton", "toolTip", "brox_dhs 112"},
            {"BitsFileEditor", "windowTitle", "brox_bits_table 132"},
            {"actionDelete_Size", "text", "brox_bits_table 155"},
        };
        for (const auto& [object, property, key] : texts) {
            QCOMPARE(child<QObject>(mViewer, object)->property(property).toString(), key);
        }
        const auto* bits = child<QTableWidget>(mViewer, "drillBitsTableWidget");
        QCOMPARE(bits->horizontalHeaderItem(1)->text(), "brox_bits_table 146");
        QCOMPARE(bits->horizontalHeaderItem(2)->text(), "brox_bits_table 147");
        Answers answers;
        answers.add([](QDialog* dialog) {
            QCOMPARE(qobject_cast<QMessageBox*>(dialog)->textFormat(), Qt::PlainText);
            dialog->reject();
        });
        click(mViewer, "deleteToolButton");
        QCOMPARE(answers.seen.value(0).title, "brox_model_manager 159");
        QCOMPARE(answers.seen.value(0).text, "brox_model_manager 160 'a'?");
    }

private:
    std::optional<Host> mHost;
    QWidget* mViewer = nullptr;
};

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
