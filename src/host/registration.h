#pragma once

// What `registerFunctions` calls: one function for each group of things that scripts are given.

void registerMetalTable();    // window and input
void registerSailfishTable(); // keys on the screen
void registerOstrelTable();   // the host itself
void registerPlushTable();    // images: their lives, pixels and files
void registerPlushDrawing();  // images on images
void registerPlushFilters();  // operations on one whole image
void registerPlushFiles();    // files of the engine's own form
void registerGlobalHelpers(); // functions without a table
void registerConstants();

// Keys without a feature behind them yet. The second call completes the table of images when that has its own keys.
void registerUnavailableTables();
void registerUnavailablePlushEntries();
