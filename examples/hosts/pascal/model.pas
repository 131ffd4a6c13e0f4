{ SPDX-License-Identifier: MIT }
{ Writes all eleven elements. VESK is the folder of the library:

      fpc -v0 -Fl"$VESK/lib" -k"-rpath=$VESK/lib" model.pas
      ./model fan

  makes veskfan.dat. The unit vesk, in vesk.pas, says what it guards against. }
program model;

{$mode objfpc}{$H+}

uses
  SysUtils, vesk;

var
  Reason: LongInt;

function At(X, Y, Z: Double): TPoint;
begin
  Result[0] := X;
  Result[1] := Y;
  Result[2] := Z;
end;

{ Every element has its number in the header. }
procedure Number(N: LongInt);
begin
  SetHeader('DUCT-7', 'A1', N);
end;

procedure WriteModel;
begin
  Number(1);
  WritePnt(At(1, 2, 3));
  Number(2);
  WriteSeg(At(0, 0, 0), At(1000, 0, 0.5));
  Number(3);
  WriteTri(At(0, 0, 0), At(100, 0, 0), At(0, 50, 0));
  Number(4);
  WriteQua(At(0, 0, 10), At(100, 0, 10), At(100, 50, 10), At(0, 50, 10));
  Number(5);
  WriteTxt(At(1, 2, 0), At(1, 0, 0), At(0, 1, 0), 0.5, 2.5, 7, 1, 'Fan 1');
  Number(6);
  WriteBox(At(0, 0, 0), At(10, 0, 0), At(0, 20, 0), At(0, 0, 30));
  Number(7);
  WriteRed(At(0, 0, 0), At(10, 0, 0), At(0, 10, 0), At(10, 10, 0),
    At(2, 2, 20), At(8, 2, 20), At(2, 8, 20), At(8, 8, 20));
  Number(8);
  WriteCyl(At(1, 2, 3), At(1, 2, 13), 219.1);
  Number(9);
  WriteCon(At(0, 0, 0), At(0, 0, 100), 168.3, 114.3);
  Number(10);
  WriteTor(At(0, 0, 0), At(100, 0, 0), At(0, 100, 0), 20);
  Number(11);
  WriteElb(At(0, 0, 0), At(0, 0, 10), At(50, 0, 0), At(0, 50, 0), 30);
end;

begin
  if ParamCount <> 1 then
  begin
    WriteLn(StdErr, 'Usage: model NAME');
    Halt(2);
  end;
  if not OpenVesk(ParamStr(1)) then
  begin
    WriteLn(StdErr, 'vesk', ParamStr(1), '.dat: cannot be opened for writing');
    Halt(1);
  end;
  WriteModel;
  Reason := CloseVesk;
  if Reason <> 0 then
  begin
    WriteLn(StdErr, 'vesk', ParamStr(1), '.dat: ', SysErrorMessage(Reason));
    Halt(1);
  end;
end.
