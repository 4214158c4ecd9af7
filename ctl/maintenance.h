#pragma once

struct Arguments;

// The subcommands that look after a store. Each gives the program's exit code.

int runCheck(const Arguments &arguments);
int runBackup(const Arguments &arguments);
int runUpgrade(const Arguments &arguments);
int runDump(const Arguments &arguments);
int runLoad(const Arguments &arguments);
