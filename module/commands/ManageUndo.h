#pragma once

// Undo marks for the suite's commands: a mark in the host's undo history before a group of
// drawing changes, and a step back from inside a running command. Both send the host's own undo
// commands with command echo off, and leave echo on afterwards whatever it was before.

#include "module/entry/LayoutApi.h"

class LAYOUT_API CManageUndo {
public:
    CManageUndo() = default;
    virtual ~CManageUndo() = default;
    CManageUndo(const CManageUndo&) = default;
    CManageUndo& operator=(const CManageUndo&) = default;

    // UNDO M.
    static void InsertUndoSign();
    // Two single steps back (_u twice): the changes since the mark, then the mark itself.
    static void UndoByStep();
};
