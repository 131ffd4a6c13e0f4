Attribute VB_Name = "Vesk"
' SPDX-License-Identifier: MIT
' The thirteen functions for VBA in 64-bit Office, and WriteModel, which writes all eleven
' elements. In the VBA editor: File, Import File, this file; put CVeskDll.dll beside the
' workbook; in the immediate window
'
'     WriteModel "fan"
'
' makes veskfan.dat beside the workbook. (ThisWorkbook is Excel's; elsewhere put the folder
' there.)
'
' - 32-bit Office cannot: it knows stdcall only, and the DLL is a 64-bit one.
' - A null array throws inside the DLL and ends Excel, with every open workbook. A point is
'   a VeskPoint here, which cannot be null nor of another length. Never pass ByVal 0&.
' - Elbow asks first whether the bend has a direction, which would throw too.
' - Strings go out in the system's code page. vbNullString is the null that closes the file;
'   "" would open vesk.dat.
' - The DLL stays loaded until Excel ends: a file is complete only after CloseVesk.
Option Explicit

Public Type VeskPoint
  x As Double
  y As Double
  z As Double
End Type

Public Declare PtrSafe Function vk_openVesk Lib "CVeskDll.dll" (ByVal name As String) As Long
Public Declare PtrSafe Function vk_setHeader Lib "CVeskDll.dll" (ByVal a As String, ByVal b As String, ByVal n As Long) As Long
Public Declare PtrSafe Sub vk_writePnt Lib "CVeskDll.dll" (ByRef p As VeskPoint)
Public Declare PtrSafe Sub vk_writeSeg Lib "CVeskDll.dll" (ByRef p1 As VeskPoint, ByRef p2 As VeskPoint)
Public Declare PtrSafe Sub vk_writeTri Lib "CVeskDll.dll" (ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByRef p3 As VeskPoint)
Public Declare PtrSafe Sub vk_writeQua Lib "CVeskDll.dll" (ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByRef p3 As VeskPoint, ByRef p4 As VeskPoint)
Public Declare PtrSafe Sub vk_writeTxt Lib "CVeskDll.dll" (ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByRef p3 As VeskPoint, ByVal d1 As Double, ByVal d2 As Double, ByVal i1 As Long, ByVal i2 As Long, ByVal s As String)
Public Declare PtrSafe Sub vk_writeBox Lib "CVeskDll.dll" (ByRef p0 As VeskPoint, ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByRef p3 As VeskPoint)
Public Declare PtrSafe Sub vk_writeRed Lib "CVeskDll.dll" (ByRef p0 As VeskPoint, ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByRef p3 As VeskPoint, ByRef p4 As VeskPoint, ByRef p5 As VeskPoint, ByRef p6 As VeskPoint, ByRef p7 As VeskPoint)
Public Declare PtrSafe Function vk_writeCyl Lib "CVeskDll.dll" (ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByVal d As Double) As Long
Public Declare PtrSafe Function vk_writeCon Lib "CVeskDll.dll" (ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByVal d1 As Double, ByVal d2 As Double) As Long
Public Declare PtrSafe Function vk_writeTor Lib "CVeskDll.dll" (ByRef p0 As VeskPoint, ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByVal d As Double) As Long
Public Declare PtrSafe Function vk_writeElb Lib "CVeskDll.dll" (ByRef p0 As VeskPoint, ByRef p1 As VeskPoint, ByRef p2 As VeskPoint, ByRef p3 As VeskPoint, ByVal d As Double) As Long

Private Declare PtrSafe Function LoadLibraryW Lib "kernel32" (ByVal path As LongPtr) As LongPtr

' Finds the DLL beside the workbook; VBA looks only beside Excel and in the PATH.
Public Function OpenVesk(ByVal name As String) As Boolean
  LoadLibraryW StrPtr(ThisWorkbook.Path & "\CVeskDll.dll")
  ChDrive ThisWorkbook.Path
  ChDir ThisWorkbook.Path
  OpenVesk = vk_openVesk(name) = 1
End Function

Public Sub CloseVesk()
  vk_openVesk vbNullString
End Sub

Public Function At(ByVal x As Double, ByVal y As Double, ByVal z As Double) As VeskPoint
  At.x = x
  At.y = y
  At.z = z
End Function

Public Function Elbow(p0 As VeskPoint, p1 As VeskPoint, p2 As VeskPoint, p3 As VeskPoint, ByVal d As Double) As Long
  If Distance(p0, p2) < 0.000000000001 Or Distance(p0, p3) < 0.000000000001 Then
    Err.Raise 5, "Vesk", "p2 and p3 must not be at p0"
  End If
  Elbow = vk_writeElb(p0, p1, p2, p3, d)
End Function

Private Function Distance(a As VeskPoint, b As VeskPoint) As Double
  Distance = Sqr((a.x - b.x) ^ 2 + (a.y - b.y) ^ 2 + (a.z - b.z) ^ 2)
End Function

' Every element has its number in the header.
Private Sub Number(ByVal n As Long)
  vk_setHeader "DUCT-7", "A1", n
End Sub

Public Sub WriteModel(ByVal name As String)
  If Not OpenVesk(name) Then Err.Raise 75, "Vesk", "vesk" & name & ".dat cannot be opened for writing"
  Number 1
  vk_writePnt At(1, 2, 3)
  Number 2
  vk_writeSeg At(0, 0, 0), At(1000, 0, 0.5)
  Number 3
  vk_writeTri At(0, 0, 0), At(100, 0, 0), At(0, 50, 0)
  Number 4
  vk_writeQua At(0, 0, 10), At(100, 0, 10), At(100, 50, 10), At(0, 50, 10)
  Number 5
  vk_writeTxt At(1, 2, 0), At(1, 0, 0), At(0, 1, 0), 0.5, 2.5, 7, 1, "Fan 1"
  Number 6
  vk_writeBox At(0, 0, 0), At(10, 0, 0), At(0, 20, 0), At(0, 0, 30)
  Number 7
  vk_writeRed At(0, 0, 0), At(10, 0, 0), At(0, 10, 0), At(10, 10, 0), At(2, 2, 20), At(8, 2, 20), At(2, 8, 20), At(8, 8, 20)
  Number 8
  vk_writeCyl At(1, 2, 3), At(1, 2, 13), 219.1
  Number 9
  vk_writeCon At(0, 0, 0), At(0, 0, 100), 168.3, 114.3
  Number 10
  vk_writeTor At(0, 0, 0), At(100, 0, 0), At(0, 100, 0), 20
  Number 11
  Elbow At(0, 0, 0), At(0, 0, 10), At(50, 0, 0), At(0, 50, 0), 30
  CloseVesk
End Sub
