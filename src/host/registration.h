#pragma once

// What `registerFunctions` calls: one function for each group of things that scripts are given.

void registerMetalTable();    // window and input
void registerSailfishTable(); // keys on the screen
void registerOstrelTable();   // the host itself
void registerPlushTable();    // images
void registerPlushFiles();    // files of the engine's own form
void registerGlobalHelpers(); // functions without a table
void registerConstants();

// Keys without a feature behind them yet. The second call completes the table of images when that has its own keys.
void registerUnavailableTables();
void registerUnavailablePlushEntries();
