// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "exchange/OrderWords.h"
#include "orders/Arrangement.h"

#include <QGroupBox>

#include <memory>

namespace Ui {
class OrderBox;
}

/// Asks in what order bytes are to be, and shows which byte goes where.
class OrderBox final : public QGroupBox {
    Q_OBJECT

public:
    /// What is done with the contents of several chips.
    enum class Way { Join, Split };

    explicit OrderBox(QWidget *parent = nullptr);
    ~OrderBox() override;

    /// Before the first use: what it asks for, and which chip the bytes are likely for.
    void setUp(Way way, const ChipSize &chip);

    /// The bytes are likely for another chip than before.
    void setChip(const ChipSize &chip);

    Ui::OrderBox &controls() { return *controls_; }

    /// What has been chosen.
    Arrangement arrangement() const;
    /// How the chips share the bytes that are joined or split.
    Lanes lanes() const;
    /// True if the last chip, not the first, is on the lowest data lines.
    bool isLowByteLast() const;

signals:
    /// Something else has been chosen.
    void changed();

private:
    void showState();

    std::unique_ptr<Ui::OrderBox> controls_;
    Way way_ = Way::Join;
    ChipSize chip_;
};
