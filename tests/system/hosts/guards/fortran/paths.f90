! SPDX-License-Identifier: MIT
! Files with a path: whole or not at all.
!
!   paths TARGET [full]     as check-paths runs it
program paths
  use vesk
  implicit none
  character(len=400) :: path
  integer :: n, reason

  call get_command_argument(1, path)
  if (command_argument_count() == 2) then
    if (.not. open_vesk_at(path)) error stop "open_vesk_at"
    do n = 1, 100
      call write_pnt(point(n, 2, 3))
    end do
    reason = close_vesk()
    if (reason_text(reason) /= "File too large") error stop "a full disk is not told"
    call expect(path, "before")
    stop
  end if
  if (open_vesk_at("none/a")) error stop "a folder that is not there is not told"
  if (.not. open_vesk_at(path)) error stop "open_vesk_at"
  call write_pnt(point(1, 2, 3))
  call expect(path, "before")
  if (close_vesk() /= 0) error stop "close_vesk"
  call expect(path, "                 00l pt 1 2 3")
  if (.not. open_vesk_at(path)) error stop "open_vesk_at"
  call write_pnt(point(4, 2, 3))
  if (.not. open_vesk("-next")) error stop "open_vesk"  ! completes the one before
  if (close_vesk() /= 0) error stop "close_vesk"
  call expect(path, "                 00l pt 4 2 3")

contains

  subroutine expect(file, line)
    character(len=*), intent(in) :: file, line
    character(len=200) :: found
    integer :: unit
    open (newunit=unit, file=file, action="read", status="old")
    read (unit, '(a)') found
    close (unit)
    if (found /= line) error stop "the file holds: " // trim(found)
  end subroutine expect

end program paths
