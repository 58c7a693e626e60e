#!/usr/bin/env perl
# Holds what an example printed to the comments beside its lines: each "prints X" comment is a line.
# usage: check_output.pl SOURCE OUTPUT
use strict;
use warnings;

my ($source, $output) = @ARGV;
sub slurp { open my $in, '<', $_[0] or die "$_[0]: $!\n"; local $/; return scalar <$in> }
my @expected = slurp($source) =~ m{/\* prints (.*?) \*/}g;
my @printed = split /\n/, slurp($output), -1;
pop @printed;
die "$source: no comment tells what it prints\n" unless @expected;
my $faults = 0;
for my $i (0 .. (@expected > @printed ? $#expected : $#printed)) {
  my ($said, $seen) = map { $_ // '(nothing)' } $expected[$i], $printed[$i];
  next if $said eq $seen;
  print "FAULT: $source: line ", $i + 1, " is \"$seen\", and the comment says \"$said\"\n";
  $faults++;
}
exit($faults > 0);
