#include "ui/askpass_dlg.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

using namespace quenvolta;

/// Started by ssh with its question; the answer goes to the standard output. A status other than 0 refuses it.
int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QString prompt = QCoreApplication::arguments().value(1);
    CAskpassDlg dialog(ReadAskpassPrompt(prompt, qEnvironmentVariable("SSH_ASKPASS_PROMPT")));
    if (dialog.exec() != QDialog::Accepted)
        return EXIT_FAILURE;
    const QByteArray answer = dialog.Answer().toUtf8() + '\n';
    std::fwrite(answer.constData(), 1, static_cast<std::size_t>(answer.size()), stdout);
    return EXIT_SUCCESS;
}
