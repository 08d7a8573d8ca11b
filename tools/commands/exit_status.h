#pragma once

// What the program answers to the shell.
enum ExitStatus : int {
    kExitDone = 0,
    kExitMessages = 1,  // the description gave messages, or what was asked for is not in it
    kExitUsage = 2,
    kExitFailed = 3,  // a file cannot be read, or the output not be written
};
