#include "ui/side_buttons.h"

#include <QToolButton>
#include <QVBoxLayout>

#include "ui/buttons.h"
#include "ui/named.h"

namespace ledrix {

SideButtons::SideButtons(const SidePair& sides)
    : sides_(sides),
      BtnEQ{Named(SymbolButton("⇔", "OldDirとNewDirを入れ替えます"), "BtnEQ", 0),
            Named(SymbolButton("⇒", "NewﾃﾞｨﾚｸﾄﾘをOldと同じにします"), "BtnEQ", 1),
            Named(SymbolButton("⇐", "OldﾃﾞｨﾚｸﾄﾘをNewと同じにします"), "BtnEQ", 2)},
      BtnEQSel{Named(SymbolButton("←", "New 選択分から一致する Old を選択"), "BtnEQSel", 0),
               Named(SymbolButton("→", "Old 選択分から一致する New を選択"), "BtnEQSel", 1),
               Named(SymbolButton("＝", "一致全て選択"), "BtnEQSel", 2)} {
  LayOut();
  Connect();
}

void SideButtons::LayOut() {
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addStretch(2);
  for (QToolButton* const button : BtnEQ) rows->addWidget(button);
  rows->addSpacing(fontMetrics().height());
  for (QToolButton* const button : BtnEQSel) rows->addWidget(button);
  rows->addStretch(3);
}

void SideButtons::Connect() {
  connect(BtnEQ[0], &QToolButton::clicked, this, [this] { sides_.SwapFolders(); });
  connect(BtnEQ[1], &QToolButton::clicked, this,
          [this] { sides_.AlignFolders(Side::kNew, Side::kOld); });
  connect(BtnEQ[2], &QToolButton::clicked, this,
          [this] { sides_.AlignFolders(Side::kOld, Side::kNew); });
  connect(BtnEQSel[0], &QToolButton::clicked, this,
          [this] { sides_.SelectNamesakesOf(Side::kNew); });
  connect(BtnEQSel[1], &QToolButton::clicked, this,
          [this] { sides_.SelectNamesakesOf(Side::kOld); });
  connect(BtnEQSel[2], &QToolButton::clicked, this, [this] { sides_.SelectAllMatching(); });
}

}  // namespace ledrix
