#pragma once

#include <QString>

// The comment stripper and field splitter the settings functions rely on, with the library's
// rules: the ";" position is taken in 8 bits, fields are numbered from 1.
namespace qxt_detail {

// S without a trailing ";" comment, trimmed on the right; S unchanged when it has none.
QString delComment(const QString& S);
// The N-th Sep-separated field of S; empty for N below 1 or past the last field.
QString splitPar(const QString& S, QChar Sep, int N);

} // namespace qxt_detail
