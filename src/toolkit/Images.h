#pragma once

#include <QIcon>

namespace toolkit {

/// The program's small drawings.
enum class Image {
    Blank,       ///< takes the room of a mark
    ArrowUp,     ///< the header of a column sorted upward
    ArrowDown,   ///< and downward
    Star,        ///< a patient of the CAPD register
    NewSheet,    ///< a new registration
    Assessment,  ///< a cash assessment
    Paid,        ///< one that the cashier has been paid
    Pending,     ///< and one still waiting for it
    Revoked,     ///< one that was taken back
    Calendar     ///< opens the calendar of a date box
};

namespace Images {

/// Drawn anew in every size and resolution it is asked for.
QIcon Icon(Image image);

}  // namespace Images

}  // namespace toolkit
