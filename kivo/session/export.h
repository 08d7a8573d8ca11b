#pragma once

// Marks the interface of the session: everything else of libkivo_session.so stays invisible
// outside it.
#define KIVO_SESSION_API __attribute__((visibility("default")))
