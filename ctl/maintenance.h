#pragma once

struct Arguments;

// The maintenance subcommands. Each returns the exit code.

int runCheck(const Arguments &arguments);
int runBackup(const Arguments &arguments);
int runUpgrade(const Arguments &arguments);
int runDump(const Arguments &arguments);
int runLoad(const Arguments &arguments);
