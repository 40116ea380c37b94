// A status bar in Qt 6 Widgets, with a slider that dims the screen.
//
// On Linux Qt's event loop iterates GLib's default main context, so that the library's events arrive on the thread of
// the widgets, with nothing to be done for it. (Not so with QT_NO_GLIB set, or with a Qt that was built without GLib.)
// Commands block for a round trip: they are sent from a worker, and what came of them returns to the window's thread.
#include <HLXListenerBase.h>
#include <HLXSystemProxy.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QLabel>
#include <QMainWindow>
#include <QSlider>
#include <QStatusBar>
#include <QThreadPool>

class Window : public QMainWindow, private HLXPowerListenerBase {
 public:
  Window() : power_(HLX_GetSystemPowerProxy()) {
    setWindowTitle("Head unit");
    slider_->setRange(0, 100);
    setCentralWidget(slider_);
    statusBar()->addWidget(acc_);
    statusBar()->addWidget(brightness_);
    sender_.setMaxThreadCount(1);  // commands keep their order

    power_->AddListener(this);
    OnAccStateChange(power_->IsAccOnState());
    OnScreenLightLevelChanged(HLXPower::LIGHT_TYPE_DAY, power_->GetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY));
    connect(slider_, &QSlider::valueChanged, this, &Window::Dim);
  }

  ~Window() override {
    sender_.waitForDone();
    power_->RemoveListener(this);
  }

  void Dim(int level) {
    sender_.start([this, level] {
      power_->SetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY, static_cast<unsigned char>(level));
      const char* const error = HLX_GetLastCallError();  // of this thread's last command
      const QString text = error != nullptr ? QString::fromUtf8(error) : QString();
      QMetaObject::invokeMethod(this, [this, text] { statusBar()->showMessage(text, 5000); });
    });
  }

 private:
  // Callbacks come on the thread of the widgets. Other threads would have to post, as above.
  void OnAccStateChange(int on) override { Show(acc_, on != 0 ? "ACC on" : "ACC off"); }
  void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level) override {
    if (type == HLXPower::LIGHT_TYPE_DAY) Show(brightness_, QString("brightness %1").arg(level));
  }

  static void Show(QLabel* label, const QString& text) {
    label->setText(text);
    qInfo("shown: %s", qPrintable(text));
  }

  IHLXSystemPower* const power_;
  QSlider* const slider_ = new QSlider(Qt::Horizontal);
  QLabel* const acc_ = new QLabel;
  QLabel* const brightness_ = new QLabel;
  QThreadPool sender_;
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QCommandLineParser arguments;
  arguments.addHelpOption();
  arguments.addOption({"dim", "Set the brightness by day to <level> at once.", "level"});
  arguments.process(application);

  int status = 1;
  if (HLX_StartSystemProxy()) {
    Window window;
    window.show();
    if (arguments.isSet("dim")) window.Dim(arguments.value("dim").toInt());
    status = QApplication::exec();
  } else {
    qCritical("the system service is not on the session bus");
  }
  HLX_ReleaseSystemProxy();
  return status;
}
