// NOT RUN HERE. Wine's .NET does not run this example, so no test of this project does.
//
// Imports the accounts of a QuickBooks company into a plan file:
//
//     Import.exe nursery.kpf
//
// Exit code 0: imported and saved. Exit code 1: failed, the plan file is unchanged.
using System;
using System.IO;
using System.Runtime.InteropServices;

namespace Krnqb.Example
{
    public static class Program
    {
        [STAThread]  // the component lives in a single-threaded apartment
        public static int Main(string[] arguments)
        {
            if (arguments.Length != 1)
            {
                Console.WriteLine("usage: Import PLAN");
                return 2;
            }
            try
            {
                return ImportInto(Path.GetFullPath(arguments[0]));
            }
            // The component, the plan and QuickBooks raise errors as COM exceptions, plan files others.
            catch (Exception error)
            {
                Console.WriteLine("Not imported: {0} ({1:X8})", error.Message, error.HResult);
                return 1;
            }
        }

        private static int ImportInto(string file)
        {
            var plan = new Plan();
            Type type = Type.GetTypeFromProgID("KRN6_QB2002.QBDataExchange", throwOnError: true);
            dynamic exchange = Activator.CreateInstance(type);
            try
            {
                exchange.KRNPlanData = plan;
                exchange.KRNOpenPlan(file);
                exchange.KRNProduct = 1;  // QBKRN_ALD
                exchange.KRNStartingYear = 2003;
                exchange.KRNStartingMonth = 1;
                exchange.BalancesImport = 0;  // BalImport_None: accounts without amounts
                exchange.IncludeExpenseAccounts = true;
                exchange.IncludeIncomeAccounts = true;
                using (new Progress(exchange))
                {
                    // Go returns true even if the import failed: the error is in the pair.
                    if (!exchange.Go() || exchange.ErrorNumber != 0)
                    {
                        Console.WriteLine("Not imported: {0} (error {1})", exchange.ErrorDescription, exchange.ErrorNumber);
                        return 1;
                    }
                }
                plan.Save(file);
            }
            finally
            {
                // The component and the plan hold references to each other until the component lets go of the plan.
                exchange.KRNPlanData = null;
                Marshal.FinalReleaseComObject(exchange);
            }
            Console.WriteLine("The accounts are in {0}", file);
            return 0;
        }
    }
}
