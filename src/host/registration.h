#pragma once

// What `registerFunctions` calls: one function for each group of things that scripts are given.

void registerMetalTable();    // window and input
void registerSailfishTable(); // keys on the screen
void registerOstrelTable();   // the host itself
void registerPlushTable();    // images
void registerGlobalHelpers(); // functions without a table
void registerConstants();
