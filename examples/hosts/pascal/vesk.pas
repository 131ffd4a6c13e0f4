{ SPDX-License-Identifier: MIT }
{ The thirteen functions for Free Pascal.

  A point is an array[0..2] of Double, passed by its address: the compiler refuses one of
  another length. It is null only as P^ of a nil pointer, which must not be passed. An
  exception of the library ends the program, so WriteElb asks first. }
unit vesk;

{$mode objfpc}{$H+}

interface

type
  TPoint = array[0..2] of Double;

{ Opens 'vesk' + Name + '.dat' and closes what is open; False if the system refused. }
function OpenVesk(const Name: AnsiString): Boolean;
{ Completes the file. Returns 0, or the reason why the system did not take all of it, a full
  disk for one: the file is not whole then. SysErrorMessage of SysUtils says it in words. }
function CloseVesk: LongInt;
{ False if N is not within 0 to 46655; its high digits are lost then. }
function SetHeader(const A, B: AnsiString; N: LongInt): Boolean;
{ Returns False and writes nothing if S is longer than 512 bytes: it would not fit. }
function WriteTxt(const P1, P2, P3: TPoint; D1, D2: Double; I1, I2: LongInt;
  const S: AnsiString): Boolean;
{ Returns 0 and writes nothing if P2 or P3 is at P0: the bend has no direction then. }
function WriteElb(const P0, P1, P2, P3: TPoint; D: Double): LongInt;

procedure WritePnt(constref P: TPoint); cdecl; external 'CVeskDll' name 'vk_writePnt';
procedure WriteSeg(constref P1, P2: TPoint); cdecl; external 'CVeskDll' name 'vk_writeSeg';
procedure WriteTri(constref P1, P2, P3: TPoint); cdecl; external 'CVeskDll' name 'vk_writeTri';
procedure WriteQua(constref P1, P2, P3, P4: TPoint); cdecl; external 'CVeskDll' name 'vk_writeQua';
procedure WriteBox(constref P0, P1, P2, P3: TPoint); cdecl; external 'CVeskDll' name 'vk_writeBox';
procedure WriteRed(constref P0, P1, P2, P3, P4, P5, P6, P7: TPoint); cdecl;
  external 'CVeskDll' name 'vk_writeRed';
function WriteCyl(constref P1, P2: TPoint; D: Double): LongInt; cdecl;
  external 'CVeskDll' name 'vk_writeCyl';
function WriteCon(constref P1, P2: TPoint; D1, D2: Double): LongInt; cdecl;
  external 'CVeskDll' name 'vk_writeCon';
function WriteTor(constref P0, P1, P2: TPoint; D: Double): LongInt; cdecl;
  external 'CVeskDll' name 'vk_writeTor';

implementation

uses
  initc, Math;

function vk_openVesk(Name: PAnsiChar): LongInt; cdecl; external 'CVeskDll';
function vk_setHeader(A, B: PAnsiChar; N: LongInt): LongInt; cdecl; external 'CVeskDll';
procedure vk_writeTxt(constref P1, P2, P3: TPoint; D1, D2: Double; I1, I2: LongInt;
  S: PAnsiChar); cdecl; external 'CVeskDll';
function vk_writeElb(constref P0, P1, P2, P3: TPoint; D: Double): LongInt; cdecl;
  external 'CVeskDll';

function OpenVesk(const Name: AnsiString): Boolean;
begin
  Result := vk_openVesk(PAnsiChar(Name)) = 1;
end;

function CloseVesk: LongInt;
begin
  cerrno := 0;
  vk_openVesk(nil);
  Result := cerrno;
end;

function SetHeader(const A, B: AnsiString; N: LongInt): Boolean;
begin
  Result := vk_setHeader(PAnsiChar(A), PAnsiChar(B), N) = 1;
end;

function WriteTxt(const P1, P2, P3: TPoint; D1, D2: Double; I1, I2: LongInt;
  const S: AnsiString): Boolean;
begin
  Result := Length(S) <= 512;
  if Result then vk_writeTxt(P1, P2, P3, D1, D2, I1, I2, PAnsiChar(S));
end;

function Distance(const A, B: TPoint): Double;
begin
  Result := Norm([A[0] - B[0], A[1] - B[1], A[2] - B[2]]);
end;

function WriteElb(const P0, P1, P2, P3: TPoint; D: Double): LongInt;
begin
  Result := 0;
  if (Distance(P0, P2) < 1e-12) or (Distance(P0, P3) < 1e-12) then Exit;
  Result := vk_writeElb(P0, P1, P2, P3, D);
end;

initialization
  { Pascal stops at a division by zero or an infinity; the library counts on the usual
    floating point, which goes on. }
  SetExceptionMask([exInvalidOp, exDenormalized, exZeroDivide, exOverflow, exUnderflow, exPrecision]);

end.
