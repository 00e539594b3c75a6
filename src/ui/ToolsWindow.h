#pragma once

#include <QMainWindow>

class QAction;
class QLineEdit;
class QListWidget;

namespace qmr {

class DesktopServices;
class Session;

// The "Power User Function" window: its menus "Scrapbook Management" (the extension's own
// data folder, a two-pane file manager on the current scrapbook, the store in the text editor,
// the multi-scrapbook list of a base folder), "Tumbnail" (the picture copies) and "Tools" (the
// device settings, where the desktop has them), a base-folder box and a log of its own.
class ToolsWindow : public QMainWindow {
    Q_OBJECT
  public:
    ToolsWindow(Session& session, DesktopServices& desktop, QWidget* parent);

    // The main window's own commands, shown here too.
    void addThumbnailCommands(const QList<QAction*>& commands);
    void addStoreCommand(QAction* command);

    QLineEdit* baseFolder() const { return m_base; }
    QListWidget* log() const { return m_log; }
    QAction* command(const QString& caption) const;

    void openDefaultScrapbookFolder();
    void openWithFileManager();
    void dirToMultiScrapbook();
    void deviceManagement();

  private:
    void start(const QStringList& command, const char* settingKey);
    Session& m_session;
    DesktopServices& m_desktop;
    QMenu* m_management = nullptr;
    QMenu* m_thumbnails = nullptr;
    QLineEdit* m_base = nullptr;
    QListWidget* m_log = nullptr;
};

} // namespace qmr
