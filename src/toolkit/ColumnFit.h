#pragma once

class QAbstractItemView;
class QHeaderView;
class QTableView;

namespace toolkit {

/// The width in pixels at which a column shows its header and the texts of its first rows:
/// at least `stated`, at most twice that or what the header needs.
int FittedWidth(const QAbstractItemView& view, const QHeaderView& header, int column, int stated);

/// The width in pixels at which the column fills the room that the other columns leave; at least
/// `least`.
int WidthWithRoom(const QTableView& view, int column, int least);

}  // namespace toolkit
