#pragma once

// The suite's combo box for typed values with a history: what was typed last comes first.

#include "host/ui/Dialog.h"

class CalComboBox : public CComboBox {
public:
    // Puts the box's text at the front of its list (once), keeping at most maxItems.
    void RememberText(int maxItems);
    // Every item, in order.
    CStringArray GetItems() const;
};
