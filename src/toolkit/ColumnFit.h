#pragma once

class QAbstractItemView;
class QHeaderView;

namespace toolkit {

/// The width in pixels at which a column shows its header and the texts of its first rows:
/// at least `stated`, at most twice that or what the header needs.
int FittedWidth(const QAbstractItemView& view, const QHeaderView& header, int column, int stated);

}  // namespace toolkit
