#pragma once

#include <QObject>

namespace toolkit {

/// Brings every dialog that is shown onto its screen, whole: smaller than it wishes to be where the
/// screen is, but never smaller than its layout allows. Works as long as it lives.
class ScreenFit final : public QObject {
    Q_OBJECT
public:
    /// Needs the application object. One is enough.
    ScreenFit();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace toolkit
