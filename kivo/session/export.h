#pragma once

// Marks the interface of the session: everything else of libkivo_session.so stays invisible
// outside it.
#define KIVO_SESSION_API __attribute__((visibility("default")))
// Takes one member of an exported class out of the interface again.
#define KIVO_SESSION_LOCAL __attribute__((visibility("hidden")))
