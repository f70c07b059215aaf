// The question frmEffacer: are the terminal's data to be erased?
#pragma once

#include <QDialog>
#include <functional>

class QPushButton;

namespace kalvo {

// Never takes the focus by itself: keys that are being typed must not answer it. Closing
// it, however that is done, is an answer; only "Oui" says yes.
class EraseWindow : public QDialog {
public:
    explicit EraseWindow(const std::function<void(bool erase)>& answer);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QPushButton* CmdNon;
};

}  // namespace kalvo
