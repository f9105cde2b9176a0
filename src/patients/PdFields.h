#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "db/Recordset.h"

namespace Ui {
class PdFields;
}
namespace toolkit {
class DateEdit;
}

/// The peritoneal-dialysis data that the registration sheet and the visit have in common.
class PdFields final : public QWidget {
    Q_OBJECT
public:
    explicit PdFields(QWidget* parent = nullptr);
    ~PdFields() override;

    /// The three captions of the types of catheter, which each window spells its own way.
    void SetCatheters(const QStringList& captions);
    /// Every field takes as many characters as the column of this table that it is saved in.
    void LimitTo(const QString& table);
    /// Fills texts and dates from the current row; the option groups are left as they are.
    void Load(db::Recordset& row);
    /// " Presciption", " Inquiry" or "Treatment" by its first letter; any other leaves the choice.
    void ChoosePurpose(const QString& purpose);

    /// The chosen caption as it stands, with its blanks; empty while none is chosen.
    QString ChronicPD() const;
    QString Purpose() const;
    /// Puts texts, dates and types into their positions of the save call's arguments, from 7 to 25.
    void PutInto(QStringList& arguments) const;
    /// False where a date box holds what is no date, or where the user does not stand by a date
    /// after today or two dates against their order: asks, and leads there.
    bool DatesAreMeant();
    /// True while nothing is entered or chosen.
    bool IsEmpty() const;

    /// The fields from first to last, as Enter goes through them; one option for each group.
    std::vector<QWidget*> EntryOrder() const;

private:
    bool AskAbout(toolkit::DateEdit& box, const QString& doubt);

    std::unique_ptr<Ui::PdFields> ui;
};
