// port/qt
