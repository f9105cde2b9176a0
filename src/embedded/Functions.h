#pragma once

struct sqlite3;

namespace embedded {

/// Gives a SQLite connection the collation TEXTS and the server's functions (t_upper, t_datetime
/// and so on), on which the translated statements stand. A function that fails ends its statement
/// with the text "#<number>:<description>".
void RegisterFunctions(sqlite3* database);

void RegisterTextFunctions(sqlite3* database);
void RegisterNumberFunctions(sqlite3* database);
void RegisterDateFunctions(sqlite3* database);

}  // namespace embedded
