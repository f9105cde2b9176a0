#include "wardrequests/WardEntryValidator.h"

#include "toolkit/CellText.h"

QString WardEntryValidator::Fitted(const QString& text) const {
    if (!m_numeric)
        return toolkit::OneLine(text).toUpper();
    QString kept;
    for (const QChar letter : text)
        if ((letter >= u'0' && letter <= u'9') || letter == u'.' || letter == u'/')
            kept += letter;
    return kept;
}

QValidator::State WardEntryValidator::validate(QString& input, int& position) const {
    // The caret stays behind what stood before it.
    const QString whole = Fitted(input);
    position = int(qMin(Fitted(input.left(position)).size(), whole.size()));
    input = whole;
    return Acceptable;
}
