// Working data: put in place at every start.
#pragma once

struct Program;

/// Makes the working folders and puts the record database, when it is missing, and the error-text database,
/// when it is missing or another one came with the program, in their places. Throws RunTimeError.
void UnpackDataFiles(Program& program);
