#ifndef LINKDECK_APP_INSPECTION_H
#define LINKDECK_APP_INSPECTION_H

struct AppOptions;

// Runs --list-plugins, --explain or --check-config and prints the answer to stdout as text or
// JSON; returns the exit status (--check-config: 1 when it found problems).
int runInspection(const AppOptions &options);

#endif // LINKDECK_APP_INSPECTION_H
