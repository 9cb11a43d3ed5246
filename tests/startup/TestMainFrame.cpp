#include "TestMainFrame.h"

TestMainFrame::~TestMainFrame()
{
    delete m_pWindow;
}

bool TestMainFrame::Initialize()
{
    qDebug("TestMainFrame: Initialize");
    return true;
}

void TestMainFrame::Release()
{
    qDebug("TestMainFrame: Release");
    delete m_pWindow;
}

bool TestMainFrame::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    const bool known = iInterfaceNumber == LD_INTERFACE_ROOT ||
                       iInterfaceNumber == LD_INTERFACE_MAIN_FRAME_SERVICE;
    *ppInterface = known ? this : nullptr;
    return known;
}

void TestMainFrame::Create(QWidget *pParent, const QRect &rect)
{
    qDebug("TestMainFrame: Create parent=%s rect=%s", pParent ? "set" : "null",
           rect.isNull() ? "null" : "set");
    if (!m_pWindow)
        m_pWindow = new QWidget(pParent);
    m_pWindow->show();
}
