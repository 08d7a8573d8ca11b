#pragma once

// Marks the host interface: everything else of libkivo.so stays invisible outside it.
#define KIVO_API __attribute__((visibility("default")))
// Takes one member of an exported class out of the host interface again.
#define KIVO_LOCAL __attribute__((visibility("hidden")))
